#include "sounders/table/table_sounder.h"

#include "core/files.h"
#include "recordings.h"
#include "samples/text_export.h"
#include "samples/three_column.h"
#include "table_text.h"

#include <algorithm>

namespace sondrix {
namespace {

TEST(TableSounder, RowsWithoutAFixGetTheirPlaceByTime) {
  // The fix at 10 s stands twice, as an app does it; then the boat goes on for 4 s and 20 m, then for 11 s,
  // then for 40 m, and at last a fix alone.
  const TableText table = TableOf(
      "0.0,0.0,4.5,20,1569622569000\n0.0,0.0,4.6,20,1569622570000\n53.5,13.5,4.6,20,1569622570000\n"
      "0.0,0.0,4.7,20,1569622571000\n0.0,0.0,4.8,20,1569622574000\n53.5002,13.5,4.8,20,1569622574000\n"
      "0.0,0.0,4.9,20,1569622575000\n53.5002,13.5001,4.9,20,1569622585000\n0.0,0.0,5.0,20,1569622586000\n"
      "53.5006,13.5001,5.0,20,1569622587000\n0.0,0.0,5.1,20,1569622587000\n0.0,0.0,5.1,20,1569622588000\n");
  EXPECT_EQ(table.soundings,
            "- - 4.5 1569622569|53.5 13.5 4.6 1569622570|53.5 13.5 4.6 1569622570|"
            "53.50005 13.5 4.7 1569622571|53.5002 13.5 4.8 1569622574|53.5002 13.5 4.8 1569622574|"
            "- - 4.9 1569622575|53.5002 13.5001 4.9 1569622585|- - 5 1569622586|"
            "53.5006 13.5001 5 1569622587|53.5006 13.5001 5.1 1569622587|- - 5.1 1569622588|");
  EXPECT_EQ(table.remarks, "4 soundings between two fixes have their place by time|");
  EXPECT_EQ(TableOf("0.0,0.0,4.5,20,1569622569000\n0.0,0.0,4.6,20,1569622570000\n").soundings,
            "- - 4.5 1569622569|- - 4.6 1569622570|");
}

TEST(TableSounder, OrderAndSignAreFoundFromAllRows) {
  const struct {
    std::string_view text, soundings, said;
  } rows[] = {
      {"lat,lon,depth\n139.61,35.16,4.5\n139.62,35.17,4.6\n", "35.16 139.61 4.5 -|35.17 139.62 4.6 -|",
       "latitude and longitude the other way round: no other order is possible|"},
      {"139.61,35.16,4.5\n0.0,0.0,4.6\n", "35.16 139.61 4.5 -|- - 4.6 -|",
       "latitude and longitude the other way round: no other order is possible|"},
      {"53.5,13.5,-4.5\n53.5,13.5,0\n53.5,13.5,-4.6\n", "53.5 13.5 4.5 -|53.5 13.5 0 -|53.5 13.5 4.6 -|",
       "depths are below 0 in all rows: taken as heights|"},
      {"37.5,56.5,-4.5\n37.5,56.6,-4.6\n", "56.5 37.5 4.5 -|56.6 37.5 4.6 -|",
       "longitude first, as it is where all depths are below 0; --columns tells otherwise|"
       "depths are below 0 in all rows: taken as heights|"},
      {"35.16,139.61,-4.5\n", "35.16 139.61 4.5 -|",
       "latitude and longitude the other way round: no other order is possible|"
       "depths are below 0 in all rows: taken as heights|"},
      {"lat,lon,elevation\n53.5,13.5,-4.5\n53.5,13.5,0.5\n", "53.5 13.5 4.5 -|53.5 13.5 -0.5 -|",
       "depths are heights, upwards|"},
  };
  for (const auto& row : rows) {
    const TableText table = TableOf(row.text);
    EXPECT_EQ(table.soundings, row.soundings) << row.text << table.refusal;
    EXPECT_TRUE(table.takenFor.ends_with(row.said)) << row.text << table.takenFor;
  }
  // A slip isn't the column's order, and land that falls dry stays.
  std::string text;
  for (int i = 0; i < 20; ++i) text += "53.51,13.51,4.5\n";
  const TableText slip = TableOf(text + "153.51,13.51,4.5\n53.51,13.51,-0.3\n");
  EXPECT_TRUE(slip.soundings.ends_with("53.51 13.51 4.5 -|- - 4.5 -|53.51 13.51 -0.3 -|")) << slip.soundings;
  EXPECT_EQ(slip.remarks, "1 rows with a latitude beyond 90 have no position|1 depths are below 0|");
}

TEST(TableSounder, MarksOfMissingValues) {
  std::string depths = "lat,lon,depth,temp\n53.5,13.5,4.5,20\n", soundings = "53.5 13.5 4.5 -|";
  for (const char* depth : {"", "-", "NaN", "null", "-9999", "9999", "1e10", "-9999.0", "N/A"}) {
    depths += "53.5,13.5," + std::string(depth) + ",20\n";
    soundings += "53.5 13.5 - -|";
  }
  EXPECT_EQ(TableOf(depths).soundings, soundings);
  EXPECT_EQ(TableOf("lat,lon,depth\n,,4.5\n0,0,4.5\nNaN,NaN,4.5\n53.5,13.5,0\n").soundings,
            "- - 4.5 -|- - 4.5 -|- - 4.5 -|53.5 13.5 0 -|");
  EXPECT_EQ(TableOf("lat,lon,depth\n53.5,13.5,4.5 m\n53.5,13.5,10ft\n").soundings,
            "53.5 13.5 4.5 -|53.5 13.5 3.048 -|");
}

TEST(TableSounder, OneChannelOfSeveral) {
  const std::string text =
      "channel,lat,lon,depth\n0,53.5,13.5,0\n2,53.5,13.5,4.6\n5,53.5,13.5,4.7\n0,53.6,13.6,0\n"
      "2,53.6,13.6,4.8\n5,53.6,13.6,0\n";
  EXPECT_EQ(ReadTableText(text).trips[0].soundings[1].channel, 2);
  EXPECT_EQ(TableOf(text).soundings, "53.5 13.5 4.6 -|53.6 13.6 4.8 -|");
  EXPECT_NE(TableOf(text).takenFor.find("|rows of channel 2 (Downscan), not of 0 (Primary), 5 (Sidescan)|"),
            std::string::npos);
  // Without any depth it is the first.
  EXPECT_NE(TableOf("channel,lat,lon,depth\n0,53.5,13.5,0\n2,53.5,13.5,0\n2,53.6,13.6,0\n")
                .takenFor.find("channel 0 (Primary), not of 2 (Downscan)"),
            std::string::npos);
  // Numbers of surveys are none of channels.
  EXPECT_EQ(TableOf("survey,lat,lon,depth\n1,53.5,13.5,4.5\n2,53.5,13.5,4.6\n").soundings,
            "53.5 13.5 4.5 -|53.5 13.5 4.6 -|");
}

TEST(TableSounder, OurOwnTableComesBackByItsTrips) {
  const std::string text =
      "latitude,longitude,depth,time,trip,recorded,fate\n"
      "53.12345678,13.12345678,4.7,1569622543.114,\"a, \"\"b\"\".sl2\",4.5,used\n"
      ",,4.7,1569622543.2,\"a, \"\"b\"\".sl2\",4.5,no-position\n"
      "53.12345678,13.12345679,-0.2,,c.log,-0.4,used\n"
      "53.12345678,13.12345679,,,c.log,,blind\n"
      "53.12345678,13.12345679,9999.2,1,\"a, \"\"b\"\".sl2\",9999,used\n";
  const TableText table = TableOf(text);
  EXPECT_EQ(table.soundings,
            "a, \"b\".sl2:53.12345678 13.12345678 4.5 1569622543.114|- - 4.5 1569622543.2|53.12345678 "
            "13.12345679 9999 1|"
            "c.log:53.12345678 13.12345679 -0.4 -|53.12345678 13.12345679 - -|");
  EXPECT_EQ(table.takenFor, "soundings of this program: the recorded depths, split by trip|");
  EXPECT_EQ(table.badRows, 0U);
}

TEST(TableSounder, ManyTripsOfOurOwnTableInAnyOrder) {
  std::string text = "latitude,longitude,depth,time,trip,recorded,fate\n", expected;
  for (int round = 0; round < 3; ++round)
    for (int trip = 0; trip < 200; ++trip)
      text += "53.5,13.5,1," + std::to_string(1000 + round) + ",t" + std::to_string(trip) + ",2,used\n";
  for (int trip = 0; trip < 200; ++trip)
    expected += "t" + std::to_string(trip) + ":53.5 13.5 2 1000|53.5 13.5 2 1001|53.5 13.5 2 1002|";
  EXPECT_EQ(TableOf(text).soundings, expected);
}

TEST(TableSounder, ExportsOfTheMakersPrograms) {
  for (const char separator : {',', ';', '\t'}) {
    const TableText mixed = TableOf(TextExport({true, separator, true}));
    const TableText alone = TableOf(TextExport({false, separator, false}));
    EXPECT_EQ(std::count(alone.soundings.begin(), alone.soundings.end(), '|'), 2000);
    EXPECT_EQ(mixed.soundings, alone.soundings);
    EXPECT_EQ(mixed.badRows, 0U);
    const TableText plain = TableOf(ThreeColumn({true, separator}));
    EXPECT_EQ(std::count(plain.soundings.begin(), plain.soundings.end(), '|'), 600);
    EXPECT_EQ(plain.badRows, 0U);
  }
}

TEST(TableSounder, RealTrips) {
  const std::filesystem::path trips = RecordingsFolder() / "trips";
  if (!std::filesystem::is_directory(trips)) GTEST_SKIP() << "the real trips aren't here";
  std::size_t count = 0, twins = 0;
  for (const bool isBay : {false, true}) {
    for (const auto& file : std::filesystem::directory_iterator(trips / (isBay ? "bay" : "karst"))) {
      SCOPED_TRACE(file.path());
      EXPECT_EQ(Recognise(file.path().string())->name, "table");
      Reading reading;
      ReadTable(file.path().string(), {}, {}, reading);
      const SoundingList& soundings = reading.trips[0].soundings;
      const std::string text = ReadWhole(file.path().string());
      const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
      EXPECT_EQ(soundings.size() + (isBay ? 0 : 1), lines) << "a lake's have a head";
      EXPECT_EQ(reading.passedOver, PassedOverCounts{});
      count += soundings.size();
      // In most files of the bay a row with a fix follows the same ping without one: both have the place.
      std::size_t places = 0;
      for (std::size_t i = 0; i < soundings.size() && isBay; ++i) {
        const Sounding& sounding = soundings[i];
        if (!sounding.HasPosition()) continue;
        ++places;
        ASSERT_NEAR(sounding.latitude, 35.16, 0.02);
        ASSERT_NEAR(sounding.longitude, 139.61, 0.02);
        if (i == 0 || soundings[i - 1].time != sounding.time) continue;
        EXPECT_EQ(soundings[i - 1].latitude, sounding.latitude) << i;
        EXPECT_EQ(soundings[i - 1].longitude, sounding.longitude) << i;
        ++twins;
      }
      EXPECT_TRUE(!isBay || places > soundings.size() / 5);
    }
    EXPECT_GT(isBay ? twins : count, isBay ? 5000U : 20'000U);
  }
}

}  // namespace
}  // namespace sondrix
