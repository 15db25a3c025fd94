#include "table_text.h"

namespace sondrix {
namespace {

// A head and the columns' looks decide what is what.
TEST(TableLayout, ColumnsByNameOrByLook) {
  const struct {
    std::string_view text, soundings, takenFor;
  } rows[] = {
      {"lon,lat,z\n13.5,53.5,4.5\n", "53.5 13.5 4.5 -|",
       "columns: 1 longitude, 2 latitude, 3 depth in metres; between them comma|"},
      {"lat;lon;depth_ft;temp\n53.5;13.5;10;20\n", "53.5 13.5 3.048 -|",
       "columns: 1 latitude, 2 longitude, 3 depth in feet; between them semicolon|"},
      {"x,y,depth\n13.5,53.5,4.5\n", "53.5 13.5 4.5 -|",
       "columns: 1 longitude, 2 latitude, 3 depth in metres; between them comma|"},
      // A depth with its unit stands above one without.
      {"offset\twater_depth\twater_depth_m\tlongitude\tlatitude\n5\t10\t3.048\t13.5\t53.5\n",
       "53.5 13.5 3.048 -|", "columns: 3 depth in metres, 4 longitude, 5 latitude; between them tab|"},
      {"id,survey,datetime,x,y,longitude,latitude,water_depth\n"
       "0,primary,2020-03-01 10:11:12.345,1503000,7533000,13.5,53.5,4.5\n",
       "53.5 13.5 4.5 1583057472.345|",
       "columns: 2 channel, 3 time, 6 longitude, 7 latitude, 8 depth in metres; between them comma|"
       "times without a zone are UTC|"},
      // The trailing comma of a row is no column of the head.
      {"LON,LAT,DEPTH,TIME\n2.5,1.5,3,2025-08-06T22:00:00.000Z,\n", "1.5 2.5 3 1754517600|",
       "columns: 1 longitude, 2 latitude, 3 depth in metres, 4 time; between them comma|"},
      {"Channel,Frequency,Depth[ft],PositionX,PositionY,TimeOffset[ms]\nPrimary,200,10.0,4105000,7533000,0\n",
       "55.99962844 36.99989606 3.048 -|",
       "columns: 1 channel, 3 depth in feet, 4 x in Mercator metres of the sounder, 5 y in Mercator metres "
       "of the sounder; between them comma|"},
      {"53.51234,13.51234,4.5,21.5,1569622576793\n53.51234,13.51234,4.5,21.5,1569622577793\n",
       "53.51234 13.51234 4.5 1569622576.793|53.51234 13.51234 4.5 1569622577.793|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres, 5 time (ms since 1970, UTC); between "
       "them comma|"},
      {"53.51234,13.51234,4.5,1569622576,21.5\n", "53.51234 13.51234 4.5 1569622576|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres, 4 time (s since 1970, UTC); between "
       "them comma|"},
      {"38.28673531901094;63.82725462860046;2,5;107;0;0:00;15.08.2017 10:50\n",
       "38.28673532 63.82725463 2.5 1502794200|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres, 7 time; between them semicolon|times "
       "without a zone are UTC|"},
      {"17 2025-01-05 10:00:00 53.51234 13.51234 4.5\n", "53.51234 13.51234 4.5 1736071200|",
       "no head, columns: 2 date, 3 time, 4 latitude, 5 longitude, 6 depth in metres; between them blanks|"
       "times without a zone are UTC|"},
      {"53.51234 13.51234 4.5 05012025 101112.50 0.4\n", "53.51234 13.51234 4.5 1736071872.5|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres, 4 date, 5 time; between them blanks|"
       "times without a zone are UTC|"},
      {"5330.1234,N,01330.1234,W,4.5\n5330.1235,N,01330.1235,W,4.6\n",
       "53.50205667 -13.50205667 4.5 -|53.50205833 -13.50205833 4.6 -|",
       "no head, columns: 1 latitude, 2 north or south, 3 longitude, 4 east or west, 5 depth in metres; "
       "between them comma|positions as degrees and minutes without a mark between them (ddmm.mmmm)|"},
      {"lat,lon,depth\n535123400,135123400,4.5\n", "53.51234 13.51234 4.5 -|",
       "columns: 1 latitude, 2 longitude, 3 depth in metres; between them comma|positions in units of 1e-7 "
       "degrees|"},
      {"lat,lon,depth\n-41.5,186.25,4.5\n", "-41.5 -173.75 4.5 -|",
       "columns: 1 latitude, 2 longitude, 3 depth in metres; between them comma|"},
      {"Time Latitude (deg) Longitude (deg) Depth (ft)\n2020-03-01 10:11:12 53.5 13.5 10\n",
       "53.5 13.5 3.048 1583057472|",
       "columns: 1 date, 2 time, 3 latitude, 4 longitude, 5 depth in feet; between them blanks|times without "
       "a zone are UTC|"},
      {"# Columns: lat lon depth\n53.51234 13.51234 4.5\n", "53.51234 13.51234 4.5 -|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres; between them blanks|"},
      // Its head names other separators and another order than its rows have.
      {"Longitude;Latitude;Depth,m;Offset,m;Satellite,pc;HDOP,m\r\n53.51234,13.51234,4.50\r\n53.51235,13."
       "51234,4.60\r\n",
       "53.51234 13.51234 4.5 -|53.51235 13.51234 4.6 -|",
       "a head that doesn't fit its rows, columns: 1 latitude, 2 longitude, 3 depth in metres; between them "
       "comma|"},
      {"56.123456789,37.987654321,3.05,2016-05-25T14:03:07\r\n", "56.12345679 37.98765432 3.05 1464184987|",
       "no head, columns: 1 latitude, 2 longitude, 3 depth in metres, 4 time; between them comma|times "
       "without a zone are UTC|"},
  };
  for (const auto& row : rows) {
    const TableText table = TableOf(row.text);
    EXPECT_EQ(table.soundings, row.soundings) << row.text << table.refusal;
    EXPECT_EQ(table.takenFor, row.takenFor) << row.text;
  }
}

TEST(TableLayout, SpellingsOfPositions) {
  for (const std::string_view text :
       {"N 53.5,E 13.25,4.5", "53.5N,13.25E,4.5", "13.25 O;53.5 N;4,5", "53°30.000',13°15.000',4.5",
        "53° 30' 0.00\"N,13° 15' 0.00\"E,4.5", "lat,lon,depth\n53:30:00,13:15:00,4.5",
        "53.5° с.ш.;13.25° в.д.;4.5", "5330.0000N,01315.0000E,4.5",
        "53\xB0 30' 00.00\";13\xB0 15' 00.00\";4.5"})
    EXPECT_EQ(TableOf(text).soundings, "53.5 13.25 4.5 -|") << text << TableOf(text).refusal;
  EXPECT_EQ(TableOf("lat,lon,depth\n53°30.000'S,13°15.000'W,4.5\n").soundings, "-53.5 -13.25 4.5 -|");
}

TEST(TableLayout, WhatCantBeKnownIsRefusedByWhatIsMissing) {
  const struct {
    std::string_view text, reason;
  } rows[] = {
      {"lat,lon,temp\n53.5,13.5,20\n",
       "no column is a depth (lat, lon, temp); --columns names them in their order"},
      {"id,tiefe\n1,4.5\n",
       "no columns are a latitude and a longitude (id, tiefe); --columns names them in their order"},
      {"Latitude,Longitude,Depth\n\"5801136.079\",\"363421.2578\",\"4.5\"\n",
       "columns 1 and 2 hold no degrees, but 5801136.079; --source-crs tells what they are"},
      {"363421.25 5801136.07 4.5\n363422.25 5801137.07 4.6\n",
       "columns 2 and 1 hold no degrees, but 5801137.07; --source-crs tells what they are"},
      {"1569622543114,0,12,300,4095,12\n1569622543214,0,12,300,4095,12\n",
       "a fish-finder's raw echo, without positions and depths"},
      {"/begin_header\n/missing=-9999\n/fields=lat,lon,depth\n/end_header\n53.5,13.5,4.5\n",
       "a table of an ocean archive, with fields named in a head of its own, isn't read"},
      {"lat,lon,depth\n", "a head without rows"},
      {"lat,lon,altitude\n53.5,13.5,34.5\n",
       "column 3 holds heights above 0 and no depths; --columns tells which column is the depth"},
      {"1,2,3\n4,5,6\n",
       "no columns are a latitude and a longitude, and none is a depth; --columns names them in their order"},
  };
  for (const auto& row : rows) EXPECT_EQ(TableOf(row.text).refusal, row.reason) << row.text;
}

TEST(TableLayout, OptionsOverrule) {
  ReadOptions columns;
  columns.columns = {"depth_ft", "-", "lon", "lat", "time"};
  EXPECT_EQ(TableOf("lat,lon,depth,temp,x\n10,1,13.5,53.5,1569622576793\n", columns).soundings,
            "53.5 13.5 3.048 1569622576.793|");
  EXPECT_EQ(TableOf("10;1;13;53;1569622576\n", columns).soundings, "53 13 3.048 1569622576|");
  columns.columns = {"lat", "lon", "dpeth"};
  EXPECT_EQ(TableOf("53.5,13.5,4.5\n", columns).refusal, "--columns: \"dpeth\" is no name of a column");

  ReadOptions plane;
  plane.toDegrees = [](double x, double y, double& longitude, double& latitude) {
    longitude = x / 1e5;
    latitude = y / 1e5;
    return x < 9e5;
  };
  for (const std::string_view text : {"easting,northing,depth\n363421.25,5801136.5,4.5\n",
                                      "363421.25 5801136.5 4.5\n", "lat,lon,depth\n5801136.5,363421.25,4.5\n",
                                      "lat,lon,Rechtswert,Hochwert,depth\n1.5,1.5,363421.25,5801136.5,4.5\n"})
    EXPECT_EQ(TableOf(text, plane).soundings, "58.011365 3.6342125 4.5 -|")
        << text << TableOf(text, plane).refusal;
  const TableText outside = TableOf("x,y,z\n950000,5801136.5,4.5\n363421.25,5801136.5,4.5\n", plane);
  EXPECT_EQ(outside.soundings, "- - 4.5 -|58.011365 3.6342125 4.5 -|");
  EXPECT_EQ(outside.remarks, "1 positions lie outside what --source-crs reaches|");

  ReadOptions feet;
  feet.isFeet = true;
  EXPECT_EQ(TableOf("lat,lon,depth_m\n53.5,13.5,10\n", feet).soundings, "53.5 13.5 3.048 -|");
  ReadOptions up;
  up.isZUp = true;
  EXPECT_EQ(TableOf("lat,lon,z\n53.5,13.5,-10\n53.5,13.5,1.5\n53.5,13.5,0\n", up).soundings,
            "53.5 13.5 10 -|53.5 13.5 -1.5 -|53.5 13.5 0 -|");
  EXPECT_EQ(TableOf("lat,lon,depth\n53.5,13.5,10\n53.5,13.5,0\n", up).soundings,
            "53.5 13.5 10 -|53.5 13.5 0 -|");
  EXPECT_EQ(TableOf("lat,lon,elevation\n53.5,13.5,10\n53.5,13.5,9\n", up).soundings,
            "53.5 13.5 -10 -|53.5 13.5 -9 -|");
  ReadOptions channel;
  channel.channel = 2;
  EXPECT_EQ(TableOf("channel,lat,lon,depth\n0,53.5,13.5,4.5\n2,53.5,13.5,4.6\n", channel).soundings,
            "53.5 13.5 4.6 -|");
  EXPECT_EQ(TableOf("channel,lat,lon,depth\n0,53.5,13.5,4.5\n5,53.5,13.5,4.6\n", channel).refusal,
            "no rows of channel 2 (Downscan); it has 0 (Primary), 5 (Sidescan)");
}

}  // namespace
}  // namespace sondrix
