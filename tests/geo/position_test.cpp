#include "fault_in.h"
#include "geo/angles.h"
#include "geo/constants.h"
#include "geo/mercator.h"
#include "geo/nmea.h"
#include "geo/utm.h"
#include "geo/vincenty.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

TEST(Mercator, ReadsLowranceMetresAndGivesPlanarOnes) {
  EXPECT_EQ(MercY2Lat(6000000, 9), 47.476401245);
  EXPECT_EQ(MercX2Lon(-3000000, 6), -27.040119);
  EXPECT_EQ(FaultIn([] { MercY2Lat(1e10, 9); }), 6);
  EXPECT_EQ(Lon2MercX(30), 3338248.889908685);
  EXPECT_EQ(Lat2MercY(60), 8359353.46900311);
  EXPECT_EQ(FaultIn([] { Lat2MercY(-91); }), 6);
}

TEST(Angles, Atan2ByOctants) {
  const std::tuple<double, double, double> rows[] = {{1, 0, HalfPi},
                                                     {0, -1, -Pi},
                                                     {-1, 0, -HalfPi},
                                                     {1, 2, std::atan(0.5)},
                                                     {2, 1, HalfPi - std::atan(0.5)},
                                                     {2, -1, HalfPi - std::atan(-0.5)},
                                                     {1, -1, std::atan(-1) + Pi},
                                                     {-1, 1, std::atan(-1)},
                                                     {-1, -1, std::atan(1) - Pi},
                                                     {-2, 1, -std::atan(-0.5) - HalfPi},
                                                     {-2, -1, -std::atan(0.5) - HalfPi}};
  for (const auto& [y, x, angle] : rows) EXPECT_EQ(Atan2(y, x), angle) << y << ' ' << x;
  EXPECT_EQ(FaultIn([] { Atan2(0, 0); }), 6);
}

TEST(Angles, WrapAndRemainder) {
  for (const auto& [lon, wrapped] : {std::pair(180, -180), {-180, -180}, {190, -170}, {-190, 170}, {0, 0}})
    EXPECT_EQ(WrapLon(lon), wrapped) << lon;
  EXPECT_EQ(FMod(-7, 3, true), 2);
  EXPECT_EQ(FMod(-7, 3, false), -1);
  EXPECT_EQ(FMod(2.220446049250313e-16, 1, true), 0);
  EXPECT_EQ(FMod(2.220446049250314e-16, 1, true), 2.220446049250314e-16);
  EXPECT_EQ(FaultIn([] { FMod(1, 0, true); }), 11);
}

TEST(Vincenty, EndsWhereTheGeodesicDoes) {
  // Latitude, longitude, azimuth, metres, digits; where that ends.
  const std::tuple<double, double, double, double, int, double, double> rows[] = {
      {60, 30, Pi / 2, 1000, 9, 59.999998784, 30.017921146},
      {60, 30, Pi / 2, 0, 9, 60, 30},
      {0, 179.9999, Pi / 2, 1000, 6, 0, -179.991117},
      // A published test line: Flinders Peak to Buninyong.
      {-37.95103341666667, 144.42486788888888, 306.86815897 * Deg2Rad, 54972.271, 7, -37.6528211,
       143.9264955}};
  for (const auto& [lat, lon, azimuth, distance, digits, endLat, endLon] : rows) {
    const LatLon end = DestPoint(lat, lon, azimuth, distance, digits);
    EXPECT_EQ(end.Lat, endLat);
    EXPECT_EQ(end.Lon, endLon);
  }
  EXPECT_EQ(FaultIn([] { DestPoint(60, 30, std::nan(""), 1, 9); }), 6);
}

TEST(Utm, GivesEastingAndNorthing) {
  for (const auto& [lat, lon, easting, northing] : {std::tuple(60.0, 30.0, 332705.18, 6655205.48),
                                                    {-33.5, 151.25, 337440.64, -3708089.69},
                                                    {0, 183, 500000, 0}}) {  // zone 61 isn't clamped
    const UtmPosition utm = Ll2Utm(lat, lon);
    EXPECT_EQ(utm.Easting, easting);
    EXPECT_EQ(utm.Northing, northing);
  }
  EXPECT_EQ(FaultIn([] { Ll2Utm(60, 1e7); }), 6);
}

TEST(Nmea, LengthChoosesTheForm) {
  const std::tuple<const char*, int, double> rows[] = {
      {"5545.1234", 55, 45.1234}, {"03745.1234", 37, 45.1234}, {"5545.12345", 554, 45.12345}, {"", 0, 0},
      {"545.123", 0, 0},          {"abcd.efgh", 0, 0}};
  for (const auto& [text, whole, minutes] : rows)
    EXPECT_EQ(Nmea2Deg(text), whole + static_cast<double>(static_cast<float>(minutes / 60))) << text;
  for (const char* bad : {"554512345", "0374512345"}) EXPECT_EQ(FaultIn([&] { Nmea2Deg(bad); }), 5) << bad;
  EXPECT_EQ(FaultIn([] { Nmea2Deg("9991.1E999"); }), 6);
}

}  // namespace
}  // namespace sondrix
