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
  for (const auto& [unixSeconds, texts] :
       std::map<std::int64_t, std::string>{{951868799, "2000-02-29T23:59:59 29-Feb-00 23:59:59 00.02.29"},
                                           {-1, "1969-12-31T23:59:59 31-Dec-69 23:59:59 69.12.31"},
                                           {4294967295, "2106-02-07T06:28:15 07-Feb-06 06:28:15 06.02.07"},
                                           {-2209248000, "1899-12-29T00:00:00 29-Dec-99 00:00:00 99.12.29"},
                                           {-2209248001, "1899-12-28T23:59:59 28-Dec-99 23:59:59 99.12.28"},
                                           {-30610224001, "0999-12-31T23:59:59 31-Dec-99 23:59:59 99.12.31"},
                                           {-60715526401, "0045-12-31T23:59:59 31-Dec-45 23:59:59 45.12.31"},
                                           {-62135596801, "0000-12-31T23:59:59 31-Dec-00 23:59:59 00.12.31"},
                                           {-62167219201, "-1-12-31T23:59:59 31-Dec-99 23:59:59 99.12.31"}}) {
    const DateSeconds date = DateOfUnix(unixSeconds);
    EXPECT_EQ(Stamp(date) + " " + TrackDate(date) + " " + ClockTime(date) + " " + LogDate(date), texts);
  }
  EXPECT_EQ(DayCount(DateOfUnix(43200)), 25569.5);
}

TEST(DateTime, ClockIsLocal) {
  const std::time_t now = std::time(nullptr);
  // cppcheck-suppress localtimeCalled ; the portable one, in a test of one thread
  const std::tm local = *std::localtime(&now);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
  EXPECT_EQ(Stamp(LocalDate(now)), text);
  EXPECT_LE(std::abs(ClockNow() - LocalDate(now)), 2);
}

TEST(Ms2Hms, HoursRunOn) {
  for (const auto& [milliseconds, text] : {std::pair<std::int64_t, const char*>(3661999, "01:01:01"),
                                           {2147483647, "596:31:23"},
                                           {-1, "-01:59:59"},
                                           {-1000, "-01:59:59"},
                                           {-1001, "-01:59:58"},
                                           {-3600000, "-01:00:00"}}) {
    EXPECT_EQ(Ms2Hms(milliseconds), text);
  }
}

}  // namespace
}  // namespace sondrix
