#include "sounders/table/table_sounder.h"

#include "core/files.h"
#include "recordings.h"
#include "samples/text_export.h"
#include "samples/three_column.h"
#include "table_text.h"

#include <algorithm>
#include <cstring>
#include <map>

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
  for (const std::string_view depth : {"", "-", "NaN", "null", "-9999", "9999", "1e10", "-9999.0", "N/A"})
    EXPECT_EQ(
        TableOf("lat,lon,depth,temp\n53.5,13.5," + std::string(depth) + ",20\n53.5,13.5,4.5,20\n").soundings,
        "53.5 13.5 - -|53.5 13.5 4.5 -|")
        << depth;
  EXPECT_EQ(TableOf("lat,lon,depth\n,,4.5\n0,0,4.5\nNaN,NaN,4.5\n53.5,13.5,0\n").soundings,
            "- - 4.5 -|- - 4.5 -|- - 4.5 -|53.5 13.5 0 -|");
  EXPECT_EQ(TableOf("lat,lon,depth\n53.5,13.5,4.5 m\n53.5,13.5,10ft\n").soundings,
            "53.5 13.5 4.5 -|53.5 13.5 3.048 -|");
}

TEST(TableSounder, OneChannelOfSeveral) {
  const std::string text =
      "channel,lat,lon,depth\n0,53.5,13.5,0\n2,53.5,13.5,4.6\n5,53.5,13.5,4.7\n0,53.6,13.6,0\n2,53.6,13.6,4."
      "8\n5,53.6,13.6,0\n";
  const Reading reading = ReadTableText(text);
  ASSERT_EQ(reading.trips[0].soundings.size(), 2U);
  EXPECT_EQ(reading.trips[0].soundings[1].channel, 2);
  EXPECT_EQ(SoundingText(reading.trips[0].soundings[1]), "53.6 13.6 4.8 -");
  EXPECT_EQ(reading.takenFor.at(1), "rows of channel 2 (Downscan), not of 0 (Primary), 5 (Sidescan)");
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
  std::string text = "latitude,longitude,depth,time,trip,recorded,fate\n";
  for (int round = 0; round < 3; ++round)
    for (int trip = 0; trip < 200; ++trip)
      text += "53.5,13.5,1," + std::to_string(1000 + round) + ",t" + std::to_string(trip) + ",2,used\n";
  const Reading reading = ReadTableText(text);
  ASSERT_EQ(reading.trips.size(), 200U);
  for (std::size_t i = 0; i < 200; ++i) {
    ASSERT_EQ(reading.trips[i].name, "t" + std::to_string(i));
    ASSERT_EQ(reading.trips[i].soundings.size(), 3U);
    for (std::size_t j = 0; j < 3; ++j)
      EXPECT_EQ(reading.trips[i].soundings[j].time, 1000 + static_cast<double>(j));
  }
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

Reading ReadShared(const std::filesystem::path& path) {
  Reading reading;
  EXPECT_EQ(Recognise(path.string())->name, "table");
  ReadTable(path.string(), {}, {}, reading);
  return reading;
}

TEST(TableSounder, RealTripsOfABay) {
  const std::filesystem::path folder = RecordingsFolder() / "trips" / "bay";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no trips/bay";
  std::size_t twins = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    const Reading reading = ReadShared(file.path());
    const SoundingList& soundings = reading.trips[0].soundings;
    const std::string text = ReadWhole(file.path().string());
    EXPECT_EQ(soundings.size(), static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
    EXPECT_EQ(reading.passedOver, PassedOverCounts{});
    // In most files a row with a fix follows the same ping without one: both have the place.
    std::size_t places = 0;
    for (std::size_t i = 0; i < soundings.size(); ++i) {
      const Sounding& sounding = soundings[i];
      places += sounding.HasPosition() ? 1 : 0;
      if (i == 0 || soundings[i - 1].time != sounding.time || !sounding.HasPosition()) continue;
      EXPECT_EQ(soundings[i - 1].latitude, sounding.latitude) << file.path() << i;
      EXPECT_EQ(soundings[i - 1].longitude, sounding.longitude) << file.path() << i;
      ++twins;
    }
    EXPECT_GT(places, soundings.size() / 5) << file.path();
    for (std::size_t i = 0; i < soundings.size(); ++i) {
      if (!soundings[i].HasPosition()) continue;
      ASSERT_NEAR(soundings[i].latitude, 35.16, 0.02);
      ASSERT_NEAR(soundings[i].longitude, 139.61, 0.02);
    }
  }
  EXPECT_GT(twins, 5000U);
}

TEST(TableSounder, RealLinesOverAKarstLake) {
  const std::filesystem::path folder = RecordingsFolder() / "trips" / "karst";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no trips/karst";
  std::size_t count = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    const Reading reading = ReadShared(file.path());
    const std::string text = ReadWhole(file.path().string());
    EXPECT_EQ(reading.trips[0].soundings.size() + 1,
              static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
    count += reading.trips[0].soundings.size();
  }
  EXPECT_GT(count, 20'000U);
}

}  // namespace
}  // namespace sondrix
