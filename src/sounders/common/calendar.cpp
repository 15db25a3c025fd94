#include "sounders/common/calendar.h"

#include <chrono>

namespace sondrix {

std::optional<int> DayOf(int year, int month, int day) {
  // A month and a day of the calendar keep one byte of a larger number.
  if (year < 1900 || year > 2200 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return std::nullopt;
  return static_cast<int>(std::chrono::sys_days(date).time_since_epoch().count());
}

}  // namespace sondrix
