#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace sondrix {

// How the cells of a column tell a time.
enum class TimeForm : std::uint8_t {
  None,
  Text,     // dates and clock times in one of many spellings
  Seconds,  // since 1970 UTC, as are the next
  Milliseconds,
  Microseconds,
  Nanoseconds,
  ExcelDays,  // days since 30 December 1899, or a part of a day, of a clock on the wall
  YearFirst,  // yyyymmdd, maybe with hhmmss behind it
  DayFirst,   // ddmmyyyy
  Clock,      // hhmmss, maybe with decimals
};

// Which part of a date with numbers comes first.
enum class DateOrder : std::uint8_t { DayFirst, MonthFirst };

// What a cell tells of a moment: a day, a time of the day, or both.
struct Moment {
  std::optional<std::int64_t> day;  // since 1970
  std::optional<double> clock;      // seconds of the day; may reach into the next
  std::optional<double> ahead;      // seconds ahead of UTC; none: no zone stands there
};

// A date, a clock time or both: "2020-03-01T10:11:12.345Z", "2020/03/01 10:11", "15.08.2017 10:50",
// "1/17/2025 4:44:16 PM", "17-Jan-2025", "10:11:12,5"; none for any other text. A year of two digits is one
// of 1970 to 2069.
std::optional<Moment> MomentOf(std::string_view text, DateOrder order);

// Of a column, from some of its cells; isTime: its head calls it a time or a date. None where the cells tell
// no time.
TimeForm TimeFormOf(std::span<const std::string_view> cells, bool isTime);

// The order that some cells allow; of two that they allow, months first between slashes and else days first.
struct DateOrderFound {
  DateOrder order = DateOrder::DayFirst;
  bool isSure = true;  // or no cell has such a date
};
DateOrderFound DateOrderOf(std::span<const std::string_view> cells);

// What a number tells in a form other than Text.
std::optional<Moment> MomentOfNumber(double value, TimeForm form);

}  // namespace sondrix
