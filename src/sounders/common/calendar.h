#pragma once

#include <optional>
#include <string_view>

namespace sondrix {

inline constexpr double SecondsOfDay = 86'400;

// The first moment that counts as a date, of 1990, seconds since 1970: a clock that tells an earlier one was
// not set and counts from when it was switched on.
inline constexpr double FirstDate = 631'152'000;
// Behind how many there were, for a remark.
inline constexpr std::string_view BeforeFirstDate = " times before 1990 are of a clock that was not set";

// Days since 1970 of a date of the Gregorian calendar; none where there is no such day, or in whose year
// nobody logs: before 1900 and after 2200.
std::optional<int> DayOf(int year, int month, int day);

}  // namespace sondrix
