#include "sounders/table/table_time.h"

#include "sounders/common/zone.h"
#include "table_text.h"

namespace sondrix {
namespace {

constexpr double Moment2020 = 1583057472;  // 2020-03-01 10:11:12 UTC

// Soundings of one place with those times in a column, or in a column for the day and one for its time; of
// their texts the times alone are left.
TableText Timed(const std::vector<std::string>& cells, const ReadOptions& options = {},
                const std::string& columns = "time") {
  std::string text = "lat;lon;depth;" + columns + "\n";
  for (const std::string& cell : cells) text += "53.5;13.5;4.5;" + cell + "\n";
  TableText table = TableOf(text, options);
  const std::string place = "53.5 13.5 4.5 ";
  for (std::size_t at = 0; (at = table.soundings.find(place)) != std::string::npos;)
    table.soundings.erase(at, place.size());
  return table;
}

TEST(TableTime, FormsOfOneMoment) {
  for (const char* cell :
       {"2020-03-01T10:11:12Z", "2020-03-01 10:11:12", "2020-03-01T12:11:12+02:00",
        "2020-03-01T05:11:12.000-0500", "2020/03/01 10:11:12", "01.03.2020 10:11:12", "1.3.20 10:11:12",
        "03/01/2020 10:11:12 AM", "3/1/2020 10:11:12", "1-Mar-2020 10:11:12", "Mar 1 2020 10:11:12",
        "1583057472", "1583057472.000", "1583057472000", "1583057472000000", "1583057472000000000",
        "43891.424444444445", "43891,424444444445", "20200301101112"})
    EXPECT_EQ(Timed({cell}).soundings, "1583057472|") << cell;
  for (const char* cells : {"2020-03-01;10:11:12", "01.03.2020;10:11:12", "20200301;101112",
                            "43891;0.424444444", "2020-03-01 00:00:00;10:11:12 AM"})
    EXPECT_EQ(Timed({cells}, {}, "datum;uhrzeit").soundings, "1583057472|") << cells;
  EXPECT_EQ(Timed({"1/17/2025 4:44:16 PM", "12/1/2025 12:30:00 AM"}).soundings, "1737132256|1764549000|");
  // A day above 12 further down tells their order; otherwise months stand first between slashes, and it is
  // said.
  EXPECT_EQ(Timed({"01/03/2020 10:11:12", "13/03/2020 10:11:12"}).soundings, "1583057472|1584094272|");
  EXPECT_NE(Timed({"03/01/2020 10:11:12"}).takenFor.find("dates as month/day/year"), std::string::npos);
}

TEST(TableTime, WhatTellsNoMomentIsUnknown) {
  const std::string unset = "1 times before 1990 are of a clock that was not set|";
  const struct {
    std::vector<std::string> cells;
    std::string times, remarks;
  } rows[] = {
      {{"10:11:12"}, "-|", "1 times stand without a date and are left out|"},
      {{"10:11:12 2020"}, "-|", "column 4 tells no moments, so the soundings have no times from it|"},
      {{"0.5", "1.5"}, "-|-|", "column 4 tells no moments, so the soundings have no times from it|"},
      {{"2020-03-01 10:11:12", "2020-13-01 10:11:12", ""}, "1583057472|-|-|", "1 times can't be understood|"},
      {{"1970-01-16T06:01:57"}, "-|", unset},
      {{"1989-12-31 23:59:59Z"}, "-|", unset},
      {{"631151999"}, "-|", unset},
      {{"32000"}, "-|", unset}};
  for (const auto& [cells, times, remarks] : rows) {
    EXPECT_EQ(Timed(cells).soundings, times) << cells[0];
    EXPECT_EQ(Timed(cells).remarks, remarks) << cells[0];
  }
  EXPECT_FALSE(MomentOf("2020-1025-01 10:11:12", DateOrder::DayFirst));
  // Beyond all times.
  for (const TimeForm form : {TimeForm::ExcelDays, TimeForm::YearFirst, TimeForm::DayFirst, TimeForm::Clock})
    for (const double value : {1e40, 1e18, 250000.0 + 1e9, -1.0})
      EXPECT_FALSE(MomentOfNumber(value, form)) << value;
}

TEST(TableTime, AZoneOfTheOptionsHoldsForTimesWithoutOne) {
  ReadOptions options;
  options.toUtc = *ZoneOf("Europe/Berlin");
  options.zoneName = "Europe/Berlin";
  const TableText table = Timed(
      {"2020-03-29 01:59:59", "2020-03-29 03:00:00", "2020-03-29 03:00:01Z", "2020-10-25 02:30:00"}, options);
  EXPECT_EQ(table.soundings, "1585443599|1585443600|1585450801|1603585800|");
  EXPECT_NE(table.takenFor.find("times without a zone are of Europe/Berlin|"), std::string::npos);
  EXPECT_EQ(Timed({"1583057472"}, options).soundings, "1583057472|");
}

TEST(Zone, NamesAndOffsets) {
  // Seconds ahead in the winter of 2020; not a number: no zone.
  const std::pair<double, std::vector<std::string_view>> rows[] = {
      {0, {"UTC", "Z"}},
      {7200, {"+2", "+02", "+02:00"}},
      {-12600, {"-0330"}},
      {19800, {"UTC+5:30"}},
      {-3600, {"GMT-1"}},
      {3600, {"Europe/Berlin"}},
      {32400, {"Asia/Tokyo"}},
      {-18000, {"America/New_York", "Etc/GMT+5"}},
      {Unknown, {"", "Berlin", "+", "+25", "+1:2", "2", "../Europe/Berlin", "/etc/passwd"}}};
  for (const auto& [ahead, zones] : rows)
    for (const std::string_view zone : zones) {
      const std::optional<ToUtc> toUtc = ZoneOf(zone);
      EXPECT_EQ(NumberText(toUtc ? Moment2020 - (*toUtc)(Moment2020) : Unknown), NumberText(ahead)) << zone;
    }
  // The hour that clocks show twice is the first, the one that they leave out counts on from before.
  const ToUtc berlin = *ZoneOf("Europe/Berlin");
  EXPECT_EQ(berlin(1603593000), 1603593000 - 7200);
  EXPECT_EQ(berlin(1585449000), 1585449000 - 3600);
  EXPECT_EQ(berlin(1e300), 1e300);
}

}  // namespace
}  // namespace sondrix
