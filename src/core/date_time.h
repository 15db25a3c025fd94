#pragma once

#include <cstdint>
#include <string>

namespace sondrix {

// Dates are whole seconds since 30 December 1899, 00:00:00, with no time zone.
using DateSeconds = std::int64_t;

// The 64-bit day count of the interfaces to other programs: days since the same date, time as the fraction.
double DayCount(DateSeconds date);

// Seconds since 01/01/1970 00:00:00 as a date.
DateSeconds DateOfUnix(std::int64_t unixSeconds);

// Seconds since 01/01/1970 00:00:00 UTC as a date of the machine's local time.
DateSeconds LocalDate(std::int64_t unixSeconds);

// The machine's clock: seconds since 01/01/1970 00:00:00 UTC, and local time.
std::int64_t UnixNow();
DateSeconds ClockNow();

// "yyyy-mm-ddThh:mm:ss" at the end of a buffer.
void AppendStamp(std::string& out, DateSeconds date);

// The patterns "dd-mmm-yy" with English month names, "hh:mm:ss", and "yy.mm.dd".
std::string TrackDate(DateSeconds date);
std::string ClockTime(DateSeconds date);
std::string LogDate(DateSeconds date);

// The first two at the end of a buffer.
void AppendTrackDate(std::string& out, DateSeconds date);
void AppendClockTime(std::string& out, DateSeconds date);

// Whole seconds as hh:mm:ss; hours run beyond 24 and take two digits at least.
std::string Ms2Hms(std::int64_t milliseconds);
void AppendHms(std::string& out, std::int64_t milliseconds);

}  // namespace sondrix
