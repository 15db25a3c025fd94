#include "jobs/log_time.h"

#include <gtest/gtest.h>
#include <utility>

namespace sondrix {
namespace {

TEST(LogTime, YearsFrom30LieInTheLastCentury) {
  for (const auto& [date, stamp] : {std::pair("311229", "2029-12-31T12:34:56"),
                                    {"010130", "1930-01-01T12:34:56"},
                                    {"281299", "1999-12-28T12:34:56"}}) {
    LogTime time;
    time.SetTime("123456");
    time.SetDate(date);
    std::string text;
    AppendStamp(text, time.Read());
    EXPECT_EQ(text, stamp);
  }
}

}  // namespace
}  // namespace sondrix
