#pragma once

#include <cstdint>
#include <string_view>

namespace sondrix {

// A time of the logger's clock.
struct LoggerTime {
  enum class Clock : std::uint8_t {
    None,
    Absolute,  // seconds since 1970, of UTC unless needsZone
    OfDay,     // seconds of a day, or since the logger was switched on
  };
  Clock clock = Clock::None;
  double seconds = 0;
  bool needsZone = false;
  bool isFine = false;      // it has decimals, so that lines of one second can be told apart
  bool isDayFirst = false;  // a date whose first number is no month
};

// What a clock tells before FirstDate tells lines apart and no more: it is made one of OfDay.
LoggerTime Dated(const LoggerTime& time);

// The time in what a logger put before a sentence: a number of milliseconds or seconds since 1970, a date and
// time in many forms, a time alone, or the c field of a tag block, which wins. Dates as 03/15/2010 begin with
// the month unless dayFirst.
LoggerTime LoggerTimeOf(std::string_view prefix, bool dayFirst);

}  // namespace sondrix
