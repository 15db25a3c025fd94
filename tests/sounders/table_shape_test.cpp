#include "sounders/table/table_shape.h"

#include "sounders/table/table_cells.h"
#include "sounders/table/table_names.h"
#include "table_text.h"

#include <charconv>
#include <cstdlib>
#include <random>

namespace sondrix {
namespace {

constexpr std::string_view TwoRows = "53.1234 13.5678 4.5 -|53.1235 13.5679 4.6 -|";

// The same two soundings in many dresses.
TEST(TableShape, SeparatorsMarksQuotesCommentsAndEncodings) {
  std::string wide = "\xFF\xFE", wideBig = "\xFE\xFF", wideNaked;
  for (const char c :
       std::string_view("lat\tlon\ttiefe\r\n53.1234\t13.5678\t4.5\r\n53.1235\t13.5679\t4.6\r\n")) {
    (wide += c) += '\0';
    (wideNaked += c) += '\0';
    (wideBig += '\0') += c;
  }
  for (const std::string& text : std::initializer_list<std::string>{
           "53.1234,13.5678,4.5\n53.1235,13.5679,4.6\n",
           "lat,lon,depth\n53.1234,13.5678,4.5\n53.1235,13.5679,4.6",
           "\xEF\xBB\xBFlat;lon;depth\r\n53.1234;13.5678;4.5\r\n53.1235;13.5679;4.6\r\n",
           "lat;lon;depth\r53,1234;13,5678;4,5\r53,1235;13,5679;4,6\r",
           "53.1234;13.5678;4,5\n53.1235;13.5679;4,6\n",
           "53,1234 13,5678 4,5\n53,1235 13,5679 4,6\n",
           "lat\tlon\tdepth\n53,1234\t13,5678\t4,5\n53,1235\t13,5679\t4,6\n",
           "lat|lon|depth\n53.1234|13.5678|4.5\n53.1235|13.5679|4.6\n",
           "  53.1234   13.5678\t4.5\n  53.1235   13.5679    4.6  \n",
           "53.1234, 13.5678, 4.5\n53.1235 ,13.5679 ,4.6 \n",
           "\"lat\",\"lon\",\"depth\"\n\"53.1234\",\"13.5678\",\"4.5\"\n\"53.1235\",\"13.5679\",\"4.6\"\n",
           "\"53,1234\",\"13,5678\",\"4,5\"\n\"53,1235\",\"13,5679\",\"4,6\"\n",
           "# lat lon depth\n# a lake\n53.1234 13.5678 4.5\n# half\n\n53.1235 13.5679 4.6\n",
           "// lon,lat,depth\n13.5678,53.1234,4.5\n13.5679,53.1235,4.6\n",
           "My lake, 2020\n\ndepth,lon,lat\n4.5,13.5678,53.1234\n4.6,13.5679,53.1235\n",
           "lat,lon,depth\n53.1234,13.5678,4.5\nlat,lon,depth\n53.1235,13.5679,4.6\n",
           "lat,lon,depth,note\n53.1234,13.5678,4.5,a \"naked quote\n53.1235,13.5679,4.6,\"b, \"\"c\"\"\"\n",
           "\xF8\xE8\xF0\xEE\xF2\xE0;\xE4\xEE\xEB\xE3\xEE\xF2\xE0;\xE3\xEB\xF3\xE1\xE8\xED\xE0\n"
           "53,1234;13,5678;4,5\n53,1235;13,5679;4,6\n",  // Russian words in windows-1251
           "Breite;L\xE4nge;Tiefe\n53,1234;13,5678;4,5\n53,1235;13,5679;4,6\n",  // in windows-1252
           wide,
           wideBig,
           wideNaked}) {
    const TableText table = TableOf(text);
    EXPECT_EQ(table.soundings, TwoRows) << text << table.refusal << table.takenFor;
    EXPECT_EQ(table.badRows, 0U) << text;
  }
}

TEST(TableShape, BadRowsAreCountedAndTheRestIsRead) {
  const TableText table = TableOf(
      "lat,lon,depth,time\n53.1234,13.5678,4.5,\n53.1234,13\nhere,13.5,4.5,\n253.5,213.5,4.5,\n"
      "\x01\x02garbage\n53.1235,13.5679,x4.6,\n53.1235,13.5679,4.6,\n53.12");
  EXPECT_EQ(table.soundings, TwoRows);
  EXPECT_EQ(table.badRows, 5U);
  EXPECT_EQ(table.cutRows, 1U);
  const Reading reading =
      ReadTableText("lat,lon,depth\n53.5,13.5,4.5\n" + std::string(5'000'000, '1') + "\n");
  EXPECT_EQ(reading.passedOver[static_cast<std::size_t>(PassedOver::LongLines)], 1U);
  // A head that other separators part than the rows is none of them.
  EXPECT_EQ(TableOf("Longitude;Latitude;Depth,m;HDOP,m\n53.1234,13.5678,4.5\n").badRows, 0U);
}

TEST(TableShape, WhatIsNoTable) {
  for (const std::string& text : std::initializer_list<std::string>{
           "", "\n\n", "Three plain words\n",
           "Some words about a lake.\nIt has 3 islands, and 12 boats on it.\n",
           "<?xml version=\"1.0\"?>\n<gpx><trkpt lat=\"53.1\" lon=\"13.2\"/></gpx>\n",
           "{\"type\": \"FeatureCollection\", \"features\": [[1.5, 2.5, 3.5],\n[1.5, 2.5, 3.5]]}\n",
           "[IMG ID]\nID=1\n[END]\n[POLYLINE]\nData0=(53.1,13.2),(53.1,13.3)\n",
           "; a map\n[POLYLINE]\nLabel=3.5\nData0=(53.1,13.2),(53.1,13.3)\n",
           "$GPGGA,101112,5312.3,N,01312.3,E,1,8,1.0,5,M,,,,*00\n$SDDBT,10.0,f,3.0,M,1.6,F*00\n",
           "12:30:01.2 $GPGGA,101112,5312.3,N,01312.3,E,1,8,1.0,5,M,,,,*00\n12:30:01.3 "
           "$SDDBT,10.0,f,3.0,M,1.6,F*00\n",
           "OziExplorer Track Point File Version 2.1\nWGS 84\n53.1234,13.5678,0,-15,,1-Jan-20,10:00\n",
           std::string("SIMPLE\0\0\0\0\x01\x02\x03\0\0\0\0", 17), std::string(5000, '\x01')})
    EXPECT_FALSE(IsTableText(text)) << text;
}

TEST(TableShape, WideAndNarrowTablesAreRefusedAtOnce) {
  std::string wide = "1.5", row;
  for (int i = 0; i < 100'000; ++i) wide += ",7";
  for (int i = 0; i < 5; ++i) row += wide + "\n";
  EXPECT_NE(TableOf(row).refusal, "");
  EXPECT_NE(TableOf("depth\n4.5\n4.6\n").refusal, "");
  EXPECT_NE(TableOf("4.5\n4.6\n4.7\n").refusal, "");
}

TEST(TableCells, DecimalsAreTheNearestNumbers) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 200'000; ++i) {
    std::string text = std::to_string(static_cast<std::int64_t>(random() >> (random() % 60)));
    text.insert(text.size() - random() % text.size(), ".");
    if (random() % 2 == 0) text.insert(0, "-");
    double value = 0;
    const char* const end = ReadDecimal(text.data(), text.data() + text.size(), value);
    EXPECT_EQ(end != nullptr ? value : std::strtod(text.c_str(), nullptr), std::strtod(text.c_str(), nullptr))
        << text;
    EXPECT_EQ(CellNumber(text).value_or(0), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(TableCells, NumbersWithMarksOfAnyKind) {
  struct Row {
    std::string_view text;
    double value;  // not a number: none
  };
  for (const Row& row :
       {Row{"4,5", 4.5}, Row{"+4.5", 4.5}, Row{"1,234.5", 1234.5}, Row{"1.234,5", 1234.5},
        Row{"5.801.136,07", 5801136.07}, Row{"1e10", 1e10}, Row{"-1.5E-3", -0.0015}, Row{".5", 0.5},
        Row{"15.08.2017", Unknown}, Row{"4.5m", Unknown}, Row{"1,23,4", Unknown}, Row{"inf", Unknown},
        Row{"0x10", Unknown}, Row{"-", Unknown}, Row{"1e999", Unknown}, Row{"e5", Unknown}})
    EXPECT_EQ(NumberText(CellNumber(row.text).value_or(Unknown)), NumberText(row.value)) << row.text;
}

TEST(TableNames, SpellingsAndUnits) {
  const std::tuple<Meaning, double, std::vector<std::string_view>> rows[] = {
      {Meaning::Latitude, 0, {"LATITUDE", "Latitude (deg)", "Latitude[°WGS84]", "GPS_Lat", "szélesség"}},
      {Meaning::Longitude, 0, {"Zeměpisná délka", "Länge", "LNG"}},
      {Meaning::Depth, 0, {"ГЛУБИНА", "głębokość", "水深"}},
      {Meaning::Depth, 0.01, {"Tiefe (cm)"}},
      {Meaning::Depth,
       0.3048,
       {"depth_ft", "depth[ft]", "Depth (Feet)", "WaterDepth[Feet]", "Глубина (футы)"}},
      {Meaning::Depth, 1, {"Depth_m", "Depth, m", "inst_dep_m"}},
      {Meaning::Depth, 1.8288, {"Depth Fathoms"}},
      {Meaning::Height, 1, {"Elevation (m)"}},
      {Meaning::Time, 0, {"DateTime[UTC]", "Date/Time"}},
      {Meaning::Date, 0, {"datum"}},
      {Meaning::SounderX, 0, {"PositionX"}},
      {Meaning::Y, 0, {"Northing"}},
      {Meaning::Ignored, 0, {"-"}},
      {Meaning::Unknown, 0, {"depth sounder model", "lower_limit"}}};
  for (const auto& [meaning, metres, names] : rows)
    for (const std::string_view name : names) {
      EXPECT_EQ(NameOf(ColumnNameOf(name).meaning), NameOf(meaning)) << name;
      EXPECT_EQ(ColumnNameOf(name).metres, metres) << name;
    }
}

}  // namespace
}  // namespace sondrix
