#include "sounders/table/table_clock.h"

#include "core/sounding.h"
#include "sounders/common/calendar.h"
#include "sounders/table/table_cells.h"

#include <cmath>
#include <optional>

namespace sondrix {
namespace {

// Clocks are set at whole ones of these, in every zone since 1972.
constexpr double Quarter = 900;
// Of the years to which a time of a sounding can belong, seconds since 1970.
constexpr double LatestTime = 7.3e9;

double PerSecond(TimeForm form) {
  switch (form) {
    case TimeForm::Seconds:
      return 1;
    case TimeForm::Milliseconds:
      return 1e3;
    case TimeForm::Microseconds:
      return 1e6;
    case TimeForm::Nanoseconds:
      return 1e9;
    default:
      return 0;
  }
}

}  // namespace

TableClock::TableClock(const TableLayout& layout, const ReadOptions& options)
    : time_(layout.time),
      date_(layout.date),
      order_(layout.dateOrder),
      unit_(PerSecond(layout.time)),
      options_(options),
      isOwn_(layout.isOwn) {}

bool TableClock::Take(Slot slot, TimeForm form, const TableRow& row, Moment& moment) {
  std::optional<Moment> found;
  if (form == TimeForm::Text) {
    const std::string_view text = row.Text(slot);
    if (IsMissing(text)) return true;
    found = MomentOf(text, order_);
  } else {
    if (std::isnan(row.Number(slot))) return true;
    found = MomentOfNumber(row.Number(slot), form);
  }
  if (!found) return false;
  if (found->day) moment.day = found->day;
  if (found->clock) moment.clock = found->clock;
  if (found->ahead) moment.ahead = found->ahead;
  return true;
}

double TableClock::ToUtc(double local) {
  hasLocal_ = true;
  if (!options_.toUtc) return local;
  const double quarter = std::floor(local / Quarter);
  if (quarter != quarter_) {
    quarter_ = quarter;
    ahead_ = quarter * Quarter - options_.toUtc(quarter * Quarter);
  }
  return local - ahead_;
}

double TableClock::Dated(double seconds) {
  if (isOwn_ || !(seconds < FirstDate)) return KeptSeconds(seconds);
  ++unsetTimes_;
  return Unknown;
}

double TableClock::SecondsOf(const TableRow& row) {
  if (unit_ > 0) {
    const double seconds = row.Number(Slot::Time) / unit_;
    return seconds > 0 && seconds < LatestTime ? Dated(seconds) : Unknown;
  }
  if (time_ == TimeForm::None && date_ == TimeForm::None) return Unknown;
  Moment moment;
  // The time's own date stands above the other column's.
  if ((date_ != TimeForm::None && !Take(Slot::Date, date_, row, moment)) ||
      (time_ != TimeForm::None && !Take(Slot::Time, time_, row, moment))) {
    ++badTimes_;
    return Unknown;
  }
  if (!moment.day) {
    if (moment.clock) ++withoutDate_;
    return Unknown;
  }
  // A day alone is no moment.
  if (!moment.clock) return Unknown;
  const double seconds = static_cast<double>(*moment.day) * SecondsOfDay + *moment.clock;
  return Dated(moment.ahead ? seconds - *moment.ahead : ToUtc(seconds));
}

}  // namespace sondrix
