#include "jobs/log_time.h"

#include "fault_in.h"

#include <array>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(LogTime, ReadsDayFirst) {
  // Date, time and text; an empty text is fault 13.
  for (const auto& row :
       std::vector<std::array<const char*, 3>>{{"160414", "195719", "16-Apr-14 19:57:19"},
                                               {"010229", "000000", "01-Feb-29 00:00:00"},
                                               {"311230", "235959", "31-Dec-30 23:59:59"},
                                               {"160414", "195719.37", "16-Apr-14 19:57:37"},
                                               {"160414", "123", "16-Apr-14 12:03:23"},
                                               {"290223", "195719", ""},
                                               {"041614", "195719", ""},
                                               {"160414", "240000", ""},
                                               {"160414", "196019", ""},
                                               {"160414", "19-719", ""},
                                               {"160414", "", ""},
                                               {"", "195719", ""},
                                               {"1604xx", "195719", ""}}) {
    SCOPED_TRACE(std::string(row[0]) + " " + row[1]);
    LogTime time;
    time.SetTime(row[1]);
    time.SetDate(row[0]);
    time.NeedDate();
    std::string text;
    const int fault = FaultIn([&] { text = TrackDate(time.Read()) + " " + ClockTime(time.Read()); });
    EXPECT_EQ(text, row[2]);
    EXPECT_EQ(fault, text.empty() ? 13 : 0);
  }
}

TEST(LogTime, WithoutADateItIsToday) {
  for (const bool placeholder : {false, true}) {
    LogTime time;
    time.SetTime("101112");
    if (placeholder) time.SetDate("010200");
    const DateSeconds before = ClockNow() / 86400 * 86400;
    time.NeedDate();
    const DateSeconds after = ClockNow() / 86400 * 86400;
    const DateSeconds day = time.Read() - (10 * 3600 + 11 * 60 + 12);
    EXPECT_TRUE(day == before || day == after);
  }
}

}  // namespace
}  // namespace sondrix
