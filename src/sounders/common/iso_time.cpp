#include "sounders/common/iso_time.h"

#include "core/text.h"
#include "sounders/common/calendar.h"

#include <utility>

namespace sondrix {

namespace {

// Decimals behind the seconds, as a fraction; digits beyond the ninth change nothing.
double TakeFraction(std::string_view& text) {
  double fraction = 0, unit = 0.1;
  for (int count = 0; !text.empty() && IsDigit(text.front()); ++count, text.remove_prefix(1)) {
    if (count < 9) fraction += unit * (text.front() - '0');
    unit /= 10;
  }
  return fraction;
}

// "+02:00", "+0200", "+02" or "Z" as seconds east of UTC.
std::optional<int> TakeZone(std::string_view& text) {
  if (TakeOneOf(text, "Zz")) return 0;
  if (text.empty() || (text.front() != '+' && text.front() != '-')) return std::nullopt;
  std::string_view rest = text.substr(1);
  const std::optional<int> hours = TakeDigits(rest, 2, 2);
  if (!hours || *hours > 15) return std::nullopt;
  TakeOneOf(rest, ":");
  const int minutes = TakeDigits(rest, 2, 2).value_or(0);
  const int sign = text.front() == '-' ? -1 : 1;
  text = rest;
  return sign * (*hours * 3600 + minutes * 60);
}

}  // namespace

std::optional<int> TakeDigits(std::string_view& text, std::size_t least, std::size_t most) {
  int value = 0;
  std::size_t count = 0;
  while (count < most && count < text.size() && IsDigit(text[count]))
    value = value * 10 + (text[count++] - '0');
  if (count < least) return std::nullopt;
  text.remove_prefix(count);
  return value;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
  if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<TimeOfDay> TakeTimeOfDay(std::string_view& text) {
  std::string_view rest = text;
  const std::optional<int> hours = TakeDigits(rest, 1, 2);
  if (!hours || *hours > 24 || !TakeOneOf(rest, ":")) return std::nullopt;
  const std::optional<int> minutes = TakeDigits(rest, 2, 2);
  if (!minutes || *minutes > 59) return std::nullopt;
  TimeOfDay time = {.seconds = *hours * 3600.0 + *minutes * 60.0};
  if (std::string_view behind = rest; TakeOneOf(behind, ":")) {
    const std::optional<int> seconds = TakeDigits(behind, 2, 2);
    if (!seconds || *seconds > 60) return std::nullopt;
    time.seconds += *seconds;
    rest = behind;
    if (rest.size() > 1 && IsDigit(rest[1]) && TakeOneOf(rest, ".,")) {
      time.hasDecimals = true;
      time.seconds += TakeFraction(rest);
    }
  }
  text = rest;
  return time;
}

std::optional<IsoTime> TakeIsoTime(std::string_view& text) {
  std::string_view rest = text;
  const std::optional<int> year = TakeDigits(rest, 4, 4);
  if (!year || !TakeOneOf(rest, "-/")) return std::nullopt;
  const std::optional<int> month = TakeDigits(rest, 1, 2);
  if (!month || !TakeOneOf(rest, "-/")) return std::nullopt;
  const std::optional<int> dayOfMonth = TakeDigits(rest, 1, 2);
  if (!dayOfMonth) return std::nullopt;
  const std::optional<int> day = DayOf(*year, *month, *dayOfMonth);
  if (!day || !TakeOneOf(rest, "Tt ,;\t")) return std::nullopt;
  while (TakeOneOf(rest, " ")) {
  }
  const std::optional<TimeOfDay> time = TakeTimeOfDay(rest);
  if (!time) return std::nullopt;
  const std::optional<int> zone = TakeZone(rest);
  text = rest;
  return IsoTime{static_cast<double>(*day) * SecondsOfDay + time->seconds - zone.value_or(0),
                 zone.has_value(), time->hasDecimals};
}

}  // namespace sondrix
