#include "core/date_time.h"

#include "core/number_text.h"
#include "platform/clock.h"

#include <chrono>

namespace sondrix {

namespace {

constexpr std::int64_t SecondsOfDay = 86400;
constexpr std::int64_t DaysTo1970 = 25569;  // from 30 December 1899 to 1 January 1970

constexpr const char* MonthNames[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::int64_t FloorDiv(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// At least two digits, a minus sign in front of them.
void AppendTwo(std::string& out, std::int64_t value) {
  if (value < 0) {
    out += '-';
    value = -value;
  }
  if (value >= 100) {
    AppendWhole(out, value);
    return;
  }
  const char digits[] = {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
  out.append(digits, 2);
}

std::chrono::year_month_day DayOf(DateSeconds date) {
  const std::int64_t days = FloorDiv(date, SecondsOfDay) - DaysTo1970;
  return std::chrono::sys_days{std::chrono::days{days}};
}

void AppendTime(std::string& out, std::int64_t seconds) {
  const std::int64_t hours = FloorDiv(seconds, 3600);
  const std::int64_t rest = seconds - hours * 3600;
  if (hours >= 0 && hours < 100) {
    // Most times: in one piece.
    char text[] = "00:00:00";
    const auto put = [&text](std::size_t at, std::int64_t two) {
      text[at] = static_cast<char>('0' + two / 10);
      text[at + 1] = static_cast<char>('0' + two % 10);
    };
    put(0, hours);
    put(3, rest / 60);
    put(6, rest % 60);
    out.append(text, 8);
    return;
  }
  AppendTwo(out, hours);
  out += ':';
  AppendTwo(out, rest / 60);
  out += ':';
  AppendTwo(out, rest % 60);
}

void AppendTimeOfDay(std::string& out, DateSeconds date) {
  AppendTime(out, date - FloorDiv(date, SecondsOfDay) * SecondsOfDay);
}

// A year's last two digits.
std::int64_t ShortYear(std::chrono::year_month_day day) {
  const int rest = static_cast<int>(day.year()) % 100;
  return rest < 0 ? rest + 100 : rest;
}

void AppendDay(std::string& out, std::chrono::day day) { AppendTwo(out, static_cast<unsigned>(day)); }
void AppendMonth(std::string& out, std::chrono::month month) { AppendTwo(out, static_cast<unsigned>(month)); }

}  // namespace

double DayCount(DateSeconds date) { return static_cast<double>(date) / static_cast<double>(SecondsOfDay); }

DateSeconds DateOfUnix(std::int64_t unixSeconds) { return unixSeconds + DaysTo1970 * SecondsOfDay; }

std::int64_t UnixNow() { return ClockSeconds(); }

DateSeconds ClockNow() { return LocalDate(UnixNow()); }

DateSeconds LocalDate(std::int64_t unixSeconds) {
  const std::tm local = LocalTime(unixSeconds);
  const std::chrono::year_month_day day{std::chrono::year{local.tm_year + 1900},
                                        std::chrono::month{static_cast<unsigned>(local.tm_mon + 1)},
                                        std::chrono::day{static_cast<unsigned>(local.tm_mday)}};
  const std::int64_t days = std::chrono::sys_days{day}.time_since_epoch().count() + DaysTo1970;
  return days * SecondsOfDay + local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
}

void AppendStamp(std::string& out, DateSeconds date) {
  const std::chrono::year_month_day day = DayOf(date);
  const int year = static_cast<int>(day.year());
  if (year >= 0 && year < 1000) out.append(year < 10 ? 3 : year < 100 ? 2 : 1, '0');
  AppendWhole(out, year);
  out += '-';
  AppendMonth(out, day.month());
  out += '-';
  AppendDay(out, day.day());
  out += 'T';
  AppendTimeOfDay(out, date);
}

void AppendTrackDate(std::string& out, DateSeconds date) {
  const std::chrono::year_month_day day = DayOf(date);
  AppendDay(out, day.day());
  out += '-';
  out += MonthNames[static_cast<unsigned>(day.month()) - 1];
  out += '-';
  AppendTwo(out, ShortYear(day));
}

void AppendClockTime(std::string& out, DateSeconds date) { AppendTimeOfDay(out, date); }

std::string TrackDate(DateSeconds date) {
  std::string text;
  AppendTrackDate(text, date);
  return text;
}

std::string ClockTime(DateSeconds date) {
  std::string text;
  AppendClockTime(text, date);
  return text;
}

std::string LogDate(DateSeconds date) {
  const std::chrono::year_month_day day = DayOf(date);
  std::string text;
  AppendTwo(text, ShortYear(day));
  text += '.';
  AppendMonth(text, day.month());
  text += '.';
  AppendDay(text, day.day());
  return text;
}

std::string Ms2Hms(std::int64_t milliseconds) {
  std::string text;
  AppendHms(text, milliseconds);
  return text;
}

void AppendHms(std::string& out, std::int64_t milliseconds) { AppendTime(out, FloorDiv(milliseconds, 1000)); }

}  // namespace sondrix
