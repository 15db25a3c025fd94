#include "core/date_time.h"

#include <ctime>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

std::string Stamp(DateSeconds date) {
  std::string text;
  AppendStamp(text, date);
  return text;
}

TEST(DateTime, WritesTheFourPatterns) {
  const struct {
    std::int64_t unixSeconds;
    const char *stamp, *track, *clock, *log;
  } rows[] = {{0, "1970-01-01T00:00:00", "01-Jan-70", "00:00:00", "70.01.01"},
              {1464184987, "2016-05-25T14:03:07", "25-May-16", "14:03:07", "16.05.25"},
              {951868799, "2000-02-29T23:59:59", "29-Feb-00", "23:59:59", "00.02.29"},
              {-1, "1969-12-31T23:59:59", "31-Dec-69", "23:59:59", "69.12.31"},
              {4294967295, "2106-02-07T06:28:15", "07-Feb-06", "06:28:15", "06.02.07"},
              {-2209248000, "1899-12-29T00:00:00", "29-Dec-99", "00:00:00", "99.12.29"}};
  for (const auto& row : rows) {
    const DateSeconds date = DateOfUnix(row.unixSeconds);
    EXPECT_EQ(Stamp(date), row.stamp);
    EXPECT_EQ(TrackDate(date), row.track);
    EXPECT_EQ(ClockTime(date), row.clock);
    EXPECT_EQ(LogDate(date), row.log);
  }
}

TEST(DateTime, CountsDaysFrom1899) {
  EXPECT_EQ(DayCount(0), 0);
  EXPECT_EQ(Stamp(0), "1899-12-30T00:00:00");
  EXPECT_EQ(DayCount(DateOfUnix(43200)), 25569.5);
}

TEST(DateTime, ClockIsLocal) {
  char expected[2][32];
  std::string read;
  const auto look = [](char* text) {
    const std::time_t now = std::time(nullptr);
    std::strftime(text, 32, "%Y-%m-%dT%H:%M:%S", std::localtime(&now));
  };
  look(expected[0]);
  read = Stamp(ClockNow());
  look(expected[1]);
  EXPECT_LE(expected[0], read);
  EXPECT_LE(read, expected[1]);
}

TEST(Ms2Hms, HoursRunOn) {
  const struct {
    std::int64_t milliseconds;
    const char* text;
  } rows[] = {{0, "00:00:00"},        {999, "00:00:00"},         {3661000, "01:01:01"},
              {90000000, "25:00:00"}, {2147483647, "596:31:23"}, {-1, "-01:59:59"}};
  for (const auto& row : rows) EXPECT_EQ(Ms2Hms(row.milliseconds), row.text);
}

}  // namespace
}  // namespace sondrix
