#include "core/date_time.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <map>

namespace sondrix {
namespace {

std::string Stamp(DateSeconds date) {
  std::string text;
  AppendStamp(text, date);
  return text;
}

TEST(DateTime, WritesTheFourPatternsOfDaysFrom1899) {
  for (const auto& [unixSeconds, texts] : std::map<std::int64_t, std::string>{
           {0, "1970-01-01T00:00:00 01-Jan-70 00:00:00 70.01.01"},
           {1464184987, "2016-05-25T14:03:07 25-May-16 14:03:07 16.05.25"},
           {951868799, "2000-02-29T23:59:59 29-Feb-00 23:59:59 00.02.29"},
           {-1, "1969-12-31T23:59:59 31-Dec-69 23:59:59 69.12.31"},
           {4294967295, "2106-02-07T06:28:15 07-Feb-06 06:28:15 06.02.07"},
           {-2209248000, "1899-12-29T00:00:00 29-Dec-99 00:00:00 99.12.29"}}) {
    const DateSeconds date = DateOfUnix(unixSeconds);
    EXPECT_EQ(Stamp(date) + " " + TrackDate(date) + " " + ClockTime(date) + " " + LogDate(date), texts);
  }
  EXPECT_EQ(Stamp(0), "1899-12-30T00:00:00");
  EXPECT_EQ(DayCount(DateOfUnix(43200)), 25569.5);
}

TEST(DateTime, ClockIsLocal) {
  const auto look = [] {
    char text[32];
    const std::time_t now = std::time(nullptr);
    // cppcheck-suppress localtimeCalled ; the portable one, in a test of one thread
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", std::localtime(&now));
    return std::string(text);
  };
  const std::string before = look(), read = Stamp(ClockNow());
  EXPECT_TRUE(before <= read && read <= look()) << read;
}

TEST(DateTime, LocalTimeRunsOnPast2038) {
  constexpr std::int64_t zones = 15 * 3600;
  for (const std::int64_t unixSeconds : {1'000'000'000LL, 2'200'000'000LL, 5'000'000'000LL}) {
    EXPECT_LE(std::abs(LocalDate(unixSeconds) - DateOfUnix(unixSeconds)), zones) << unixSeconds;
  }
}

TEST(Ms2Hms, HoursRunOn) {
  for (const auto& [milliseconds, text] : std::map<std::int64_t, std::string>{{999, "00:00:00"},
                                                                              {3661000, "01:01:01"},
                                                                              {90000000, "25:00:00"},
                                                                              {2147483647, "596:31:23"},
                                                                              {-1, "-01:59:59"}})
    EXPECT_EQ(Ms2Hms(milliseconds), text);
}

}  // namespace
}  // namespace sondrix
