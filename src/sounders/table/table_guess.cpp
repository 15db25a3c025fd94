#include "sounders/table/table_guess.h"

#include "sounders/table/table_cells.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr double EpochMilliseconds = 1e11;
constexpr double SmallestPlane = 1e4;  // metres; projections put their zero far from where they are used

bool IsFree(const std::vector<ColumnName>& names, std::size_t column) {
  return column >= names.size() || names[column].meaning == Meaning::Unknown;
}

// How sure it is that a column is a coordinate: 2 by its decimals or letters, 1 by its range, 0 not at all.
int AngleRank(const ColumnStats& stats) {
  if (!stats.IsAngle() || stats.time != TimeForm::None) return 0;
  if (stats.fine * 2 > stats.values) return 2;
  return stats.whole * 2 < stats.values ? 1 : 0;
}

// A pair of columns with letters for the hemispheres behind each.
bool GuessByLetters(TableLayout& layout, const std::vector<ColumnStats>& stats) {
  for (std::size_t i = 0; i + 3 < stats.size(); ++i) {
    const ColumnStats &a = stats[i + 1], &b = stats[i + 3];
    if (a.letters == 0 || a.letters != a.texts || b.letters == 0 || b.letters != b.texts) continue;
    if (stats[i].values == 0 || stats[i + 2].values == 0) continue;
    const bool isLatitude = a.cells[0].find_first_of("NnSs") != std::string_view::npos;
    layout.Of(Slot::First) = isLatitude ? i : i + 2;
    layout.Of(Slot::NorthSouth) = layout.Of(Slot::First) + 1;
    layout.Of(Slot::Second) = isLatitude ? i + 2 : i;
    layout.Of(Slot::EastWest) = layout.Of(Slot::Second) + 1;
    return true;
  }
  return false;
}

bool IsDigits(TimeForm form) { return form == TimeForm::YearFirst || form == TimeForm::DayFirst; }

void GuessTimes(TableLayout& layout, const std::vector<ColumnStats>& stats) {
  for (std::size_t i = 0; i < stats.size(); ++i) {
    const TimeForm form = stats[i].time;
    if (form == TimeForm::None) continue;
    if (form != TimeForm::Text && !IsDigits(form)) {
      if (!layout.Has(Slot::Time)) layout.Of(Slot::Time) = i;
      continue;
    }
    // The first cell that tells one stands for the column: both, a date, or a clock alone.
    std::optional<Moment> moment;
    for (const std::string_view cell : stats[i].cells) {
      if (IsDigits(form)) {
        moment = MomentOfNumber(CellNumber(cell).value_or(-1), form);
      } else {
        for (const DateOrder order : {DateOrder::DayFirst, DateOrder::MonthFirst})
          if (!moment) moment = MomentOf(cell, order);
      }
      if (moment) break;
    }
    if (!moment) continue;
    if (moment->day && moment->clock) {
      layout.Of(Slot::Time) = i;
      layout.Of(Slot::Date) = NoColumn;
      return;
    }
    if (moment->day && !layout.Has(Slot::Date)) layout.Of(Slot::Date) = i;
    // Of two clocks the one beside the date: others count the time since a start.
    if (moment->clock && (!layout.Has(Slot::Time) || layout.Of(Slot::Date) + 1 == i))
      layout.Of(Slot::Time) = i;
  }
  // A date in digits has its clock in digits behind it.
  const std::size_t date = layout.Of(Slot::Date);
  if (date != NoColumn && !layout.Has(Slot::Time) && date + 1 < stats.size() && IsDigits(stats[date].time))
    layout.Of(Slot::Time) = date + 1;
  if (!layout.Has(Slot::Time) && layout.Has(Slot::Date))
    std::swap(layout.Of(Slot::Time), layout.Of(Slot::Date));
}

}  // namespace

void GuessPlace(TableLayout& layout, const std::vector<ColumnName>& names,
                const std::vector<ColumnStats>& stats, const ReadOptions& options) {
  if (stats.size() < 2) return;
  const auto take = [&](std::size_t first, std::size_t second) {
    layout.Of(Slot::First) = first;
    layout.Of(Slot::Second) = second;
  };
  if (GuessByLetters(layout, stats)) return;
  for (const int rank : {2, 1}) {
    // By their range alone only the first two columns are taken.
    const std::size_t end = rank == 2 ? stats.size() - 1 : 1;
    for (std::size_t i = 0; i < end; ++i) {
      if (!IsFree(names, i) || !IsFree(names, i + 1)) continue;
      if (AngleRank(stats[i]) < rank || AngleRank(stats[i + 1]) < rank) continue;
      return take(i, i + 1);
    }
  }
  if (!IsFree(names, 0) || !IsFree(names, 1)) return;
  // No fix yet as far as was looked.
  if (stats[0].IsZero() && stats[1].IsZero()) return take(0, 1);
  // Metres of a projection, easting first: a reader says so, or is told of which.
  const auto isPlane = [&](const ColumnStats& column) {
    const bool isLarge = column.largest > SmallestPlane && column.beyond180 * 2 > column.values;
    return column.values > 0 && column.texts == 0 && (isLarge || options.toDegrees) &&
           column.largest < EpochMilliseconds;
  };
  if (isPlane(stats[0]) && isPlane(stats[1])) take(1, 0);
}

void GuessColumns(TableLayout& layout, const TableShape& shape, const std::vector<ColumnStats>& stats,
                  const ReadOptions& options) {
  GuessTimes(layout, stats);
  const bool isTimeFirst = !stats.empty() && stats[0].time == TimeForm::Milliseconds;
  const bool isCounts = std::all_of(stats.begin(), stats.end(),
                                    [](const ColumnStats& column) { return column.whole == column.values; });
  if (isTimeFirst && isCounts && shape.columns > 3)
    throw CantRead("a fish-finder's raw echo, without positions and depths");
  GuessPlace(layout, {}, stats, options);
  if (!layout.Has(Slot::First)) return;
  const std::size_t behind = std::max(
      {layout.Of(Slot::First), layout.Of(Slot::Second),
       layout.Has(Slot::EastWest) ? std::max(layout.Of(Slot::EastWest), layout.Of(Slot::NorthSouth)) : 0});
  for (std::size_t i = behind + 1; i < stats.size(); ++i) {
    if (i == layout.Of(Slot::Time) || i == layout.Of(Slot::Date) || stats[i].time != TimeForm::None) continue;
    const ColumnStats& column = stats[i];
    if (column.values + column.zeros == 0 || column.texts * 10 > column.values + column.zeros) continue;
    if (column.tooDeep * 2 > column.values) continue;
    layout.Of(Slot::Depth) = i;
    return;
  }
}

std::optional<std::uint8_t> ChannelOfCell(std::string_view cell) {
  static constexpr struct {
    std::string_view name;  // folded
    std::uint8_t channel;
  } names[] = {{"primary", 0},
               {"traditional", 0},
               {"secondary", 1},
               {"downscan", 2},
               {"leftsidescan", 3},
               {"sidescanleft", 3},
               {"rightsidescan", 4},
               {"sidescanright", 4},
               {"sidescan", 5},
               {"compositesidescan", 5},
               {"3d", 9}};
  if (const std::optional<double> number = CellNumber(cell)) {
    const auto channel = static_cast<std::uint8_t>(*number >= 0 && *number <= 15 ? *number : 255);
    if (channel != *number) return std::nullopt;
    return channel;
  }
  const std::string folded = FoldedName(cell);
  for (const auto& row : names)
    if (folded == row.name) return row.channel;
  return std::nullopt;
}

}  // namespace sondrix
