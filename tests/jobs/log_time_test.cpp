#include "jobs/log_time.h"

#include "fault_in.h"

#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

// Years from 30 lie in the last century.
TEST(LogTime, DatesAndTimes) {
  const std::tuple<const char*, const char*, std::string> rows[] = {
      {"311229", "123456", "2029-12-31T12:34:56"},
      {"010130", "235959", "1930-01-01T23:59:59"},
      {"281299", "123456.50", "1999-12-28T12:34:50"},
      {"290200", "123", "2000-02-29T12:03:23"},
      {"290223", "120000", ""},
      {"041614", "120000", ""},
      {"", "120000", ""},
      {"0a0100", "120000", ""},
      {"04011x", "120000", ""},
      {"010100", "240000", ""},
      {"010100", "196000", ""},
      {"010100", "195960", ""},
      {"010100", "1200xx", ""},
      {"010100", "12-100", ""}};
  for (const auto& [date, clock, stamp] : rows) {
    LogTime time;
    time.SetDate(date);
    time.SetTime(clock);
    std::string text;
    EXPECT_EQ(FaultIn([&] { AppendStamp(text, time.Read()); }), stamp.empty() ? 13 : 0);
    EXPECT_EQ(text, stamp) << date << clock;
  }
}

}  // namespace
}  // namespace sondrix
