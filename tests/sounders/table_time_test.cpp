#include "sounders/table/table_time.h"

#include "sounders/common/zone.h"
#include "table_text.h"

namespace sondrix {
namespace {

constexpr double Moment2020 = 1583057472;  // 2020-03-01 10:11:12 UTC

TEST(TableTime, FormsOfOneMoment) {
  for (const std::string_view cell : {"2020-03-01T10:11:12Z",
                                      "2020-03-01 10:11:12",
                                      "2020-03-01T12:11:12+02:00",
                                      "2020-03-01T05:11:12.000-0500",
                                      "2020/03/01 10:11:12",
                                      "01.03.2020 10:11:12",
                                      "1.3.20 10:11:12",
                                      "03/01/2020 10:11:12 AM",
                                      "3/1/2020 10:11:12",
                                      "1-Mar-2020 10:11:12",
                                      "Mar 1 2020 10:11:12",
                                      "1583057472",
                                      "1583057472.000",
                                      "1583057472000",
                                      "1583057472000000",
                                      "1583057472000000000",
                                      "43891.424444444445",
                                      "43891,424444444445",
                                      "20200301101112",
                                      "10:11:12 2020"}) {
    const std::string text = "lat;lon;depth;time\n53.5;13.5;4.5;" + std::string(cell) + "\n";
    const bool isNone = cell.starts_with("10:");
    EXPECT_EQ(TableOf(text).soundings, isNone ? "53.5 13.5 4.5 -|" : "53.5 13.5 4.5 1583057472|") << cell;
  }
  for (const std::string_view cells : {"2020-03-01;10:11:12", "01.03.2020;10:11:12", "20200301;101112",
                                       "43891;0.424444444", "2020-03-01 00:00:00;10:11:12 AM"}) {
    const std::string text = "lat;lon;depth;datum;uhrzeit\n53.5;13.5;4.5;" + std::string(cells) + "\n";
    EXPECT_EQ(TableOf(text).soundings, "53.5 13.5 4.5 1583057472|") << cells;
  }
  EXPECT_EQ(TableOf("lat,lon,depth,time\n53.5,13.5,4.5,1/17/2025 4:44:16 PM\n").soundings,
            "53.5 13.5 4.5 1737132256|");
  EXPECT_EQ(TableOf("lat,lon,depth,time\n53.5,13.5,4.5,12/1/2025 12:30:00 AM\n").soundings,
            "53.5 13.5 4.5 1764549000|");
}

TEST(TableTime, TheOrderOfADateIsFoundFromAllRows) {
  // A day above 12 further down tells; otherwise months stand first between slashes, and it is said.
  EXPECT_EQ(
      TableOf("lat,lon,depth,time\n53.5,13.5,4.5,01/03/2020 10:11:12\n53.5,13.5,4.5,13/03/2020 10:11:12\n")
          .soundings,
      "53.5 13.5 4.5 1583057472|53.5 13.5 4.5 1584094272|");
  EXPECT_NE(TableOf("lat,lon,depth,time\n53.5,13.5,4.5,03/01/2020 10:11:12\n")
                .takenFor.find("dates as month/day/year"),
            std::string::npos);
}

TEST(TableTime, WhatTellsNoMomentIsUnknown) {
  const TableText clocks = TableOf("lat,lon,depth,time\n53.5,13.5,4.5,10:11:12\n");
  EXPECT_EQ(clocks.soundings, "53.5 13.5 4.5 -|");
  EXPECT_EQ(clocks.remarks, "1 times stand without a date and are left out|");
  const TableText elapsed = TableOf("lat,lon,depth,time\n53.5,13.5,4.5,0.5\n53.5,13.5,4.5,1.5\n");
  EXPECT_EQ(elapsed.soundings, "53.5 13.5 4.5 -|53.5 13.5 4.5 -|");
  EXPECT_EQ(elapsed.remarks, "column 4 tells no moments, so the soundings have no times from it|");
  const TableText bad = TableOf(
      "lat,lon,depth,time\n53.5,13.5,4.5,2020-03-01 10:11:12\n53.5,13.5,4.5,2020-13-01 "
      "10:11:12\n53.5,13.5,4.5,\n");
  EXPECT_EQ(bad.soundings, "53.5 13.5 4.5 1583057472|53.5 13.5 4.5 -|53.5 13.5 4.5 -|");
  EXPECT_EQ(bad.remarks, "1 times can't be understood|");
  EXPECT_FALSE(MomentOf("2020-1025-01 10:11:12", DateOrder::DayFirst));
  for (const std::string_view cell : {"1970-01-16T06:01:57", "1989-12-31 23:59:59Z", "631151999", "32000"}) {
    const TableText unset = TableOf("lat,lon,depth,time\n53.5,13.5,4.5," + std::string(cell) + "\n");
    EXPECT_EQ(unset.soundings, "53.5 13.5 4.5 -|") << cell;
    EXPECT_EQ(unset.remarks, "1 times before 1990 are of a clock that was not set|") << cell;
  }
}

TEST(TableTime, NumbersBeyondAllTimes) {
  for (const TimeForm form : {TimeForm::ExcelDays, TimeForm::YearFirst, TimeForm::DayFirst, TimeForm::Clock})
    for (const double value : {1e40, 1e18, 250000.0 + 1e9, -1.0})
      EXPECT_FALSE(MomentOfNumber(value, form)) << value;
}

TEST(TableTime, AZoneOfTheOptionsHoldsForTimesWithoutOne) {
  ReadOptions options;
  options.toUtc = *ZoneOf("Europe/Berlin");
  options.zoneName = "Europe/Berlin";
  const TableText table = TableOf(
      "lat,lon,depth,time\n53.5,13.5,4.5,2020-03-29 01:59:59\n53.5,13.5,4.5,2020-03-29 03:00:00\n"
      "53.5,13.5,4.5,2020-03-29 03:00:01Z\n53.5,13.5,4.5,2020-10-25 02:30:00\n",
      options);
  EXPECT_EQ(table.soundings,
            "53.5 13.5 4.5 1585443599|53.5 13.5 4.5 1585443600|53.5 13.5 4.5 1585450801|"
            "53.5 13.5 4.5 1603585800|");
  EXPECT_NE(table.takenFor.find("times without a zone are of Europe/Berlin|"), std::string::npos);
  EXPECT_EQ(TableOf("lat,lon,depth,time\n53.5,13.5,4.5,1583057472\n", options).soundings,
            "53.5 13.5 4.5 1583057472|");
}

TEST(Zone, NamesAndOffsets) {
  const struct {
    std::string_view zone;
    double ahead;  // seconds, in the winter of 2020; not a number: no zone
  } rows[] = {{"UTC", 0},
              {"Z", 0},
              {"+2", 7200},
              {"+02", 7200},
              {"+02:00", 7200},
              {"-0330", -12600},
              {"UTC+5:30", 19800},
              {"GMT-1", -3600},
              {"Europe/Berlin", 3600},
              {"Asia/Tokyo", 32400},
              {"America/New_York", -18000},
              {"Etc/GMT+5", -18000},
              {"", Unknown},
              {"Berlin", Unknown},
              {"+", Unknown},
              {"+25", Unknown},
              {"+1:2", Unknown},
              {"2", Unknown},
              {"../Europe/Berlin", Unknown},
              {"/etc/passwd", Unknown}};
  for (const auto& row : rows) {
    const std::optional<ToUtc> toUtc = ZoneOf(row.zone);
    EXPECT_EQ(toUtc.has_value(), !std::isnan(row.ahead)) << row.zone;
    EXPECT_EQ(NumberText(toUtc ? Moment2020 - (*toUtc)(Moment2020) : Unknown), NumberText(row.ahead))
        << row.zone;
  }
  // The hour that clocks show twice is the first, the one that they leave out counts on from before.
  const ToUtc berlin = *ZoneOf("Europe/Berlin");
  EXPECT_EQ(berlin(1603593000), 1603593000 - 7200);
  EXPECT_EQ(berlin(1585449000), 1585449000 - 3600);
  EXPECT_EQ(berlin(1e300), 1e300);
}

}  // namespace
}  // namespace sondrix
