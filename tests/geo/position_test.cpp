#include "core/number_text.h"
#include "core/rounding.h"
#include "digest.h"
#include "fault_in.h"
#include "geo/angles.h"
#include "geo/constants.h"
#include "geo/mercator.h"
#include "geo/near_places.h"
#include "geo/nmea.h"
#include "geo/utm.h"
#include "geo/vincenty.h"

#include <tuple>

namespace sondrix {
namespace {

TEST(Angles, Atan2WrapAndRemainder) {
  const double nan = std::nan("");
  for (const double y : {-2, -1, 0, 1, 2})
    for (const double x : {-2, -1, 0, 1, 2}) {
      if (y == 0 && x <= 0) continue;
      EXPECT_NEAR(Atan2(y, x), std::atan2(y, x), 1e-14) << y << ' ' << x;
    }
  EXPECT_EQ(Atan2(0, -1), -Pi);  // and at the edges of the octants, to the last digit
  EXPECT_EQ(std::tuple(Atan2(1, -1), Atan2(-1, 1), Atan2(-1, -1)),
            std::tuple(std::atan(-1) + Pi, std::atan(-1), std::atan(1) - Pi));
  for (const auto& [y, x] : {std::pair(0.0, 0.0), {nan, 1.0}, {1.0, nan}, {HUGE_VAL, 1.0}, {1.0, HUGE_VAL}})
    EXPECT_EQ(FaultIn([&, b = y, a = x] { Atan2(b, a); }), 6) << y << x;
  for (const auto& [lon, wrapped] : {std::pair(180, -180), {-180, -180}, {190, -170}, {-190, 170}, {0, 0}})
    EXPECT_EQ(WrapLon(lon), wrapped) << lon;
  EXPECT_EQ(FMod(-7, 3, true), 2);
  EXPECT_EQ(FMod(-7, 3, false), -1);
  EXPECT_EQ(FMod(2.220446049250313e-16, 1, true), 0);
  EXPECT_EQ(FMod(2.220446049250314e-16, 1, true), 2.220446049250314e-16);
  EXPECT_EQ(FaultIn([] { FMod(1, 0, true); }), 11);
}

TEST(NearPlaces, AlsoAcrossTheDateLine) {
  using Row = std::tuple<double, double, double, double>;
  for (const auto& [from, to, part, longitude] :
       {Row{10, 12, 0.25, 10.5}, Row{179, -179, 0.25, 179.5}, Row{179, -179, 0.75, -179.5},
        Row{-179.5, 179.5, 1, 179.5}, Row{-90, 90, 0.5, 0}, Row{180, -180, 0.5, 180}})
    EXPECT_EQ(LongitudeBetween(from, to, part), longitude) << from << ' ' << to << ' ' << part;
  // A ten-thousandth of a degree: of a meridian, and of the parallel that is half as long as the equator.
  EXPECT_NEAR(MetresBetween(20, 10, 20, 10.0001), 11.1195, 1e-4);
  EXPECT_NEAR(MetresBetween(-179.99995, 60, 179.99995, 60), 5.5598, 1e-4);
}

// All over the globe, as an independent model has it.
TEST(Position, IsReckonedAsItWas) {
  std::string text;
  const auto add = [&text](auto... numbers) { ((text += LocText(RoundTo(numbers, 6)) + " "), ...); };
  for (const double lat : {-80.0, -33.5, -1e-3, 0.0, 20.0, 56.0, 60.0, 84.0}) {
    for (const double lon : {-180.0, -179.9, -75.0, 0.0, 2.999, 37.0, 179.9999, 183.0}) {
      const UtmPosition utm = Ll2Utm(lat, lon);
      add(utm.Easting, utm.Northing, Lat2MercY(lat), Lon2MercX(lon), MercY2Lat(lat * 1e5, 9),
          MercX2Lon(lon * 1e5, 6));
      for (const double metres : {0.0, 7.5, 55000.0, 9e6})
        for (const double azimuth : {-2.0, 0.1, Pi / 2, 5.0}) {
          const LatLon end = DestPoint(lat, lon, azimuth, metres, 7);
          add(end.Lat, end.Lon);
        }
      text += '\n';
    }
  }
  EXPECT_TRUE(HasDigest(text, 0xA90DA3A2E2B74BCF));
  // A published test line: Flinders Peak to Buninyong.
  const LatLon end = DestPoint(-37.95103341666667, 144.42486788888888, 306.86815897 * Deg2Rad, 54972.271, 7);
  EXPECT_EQ(std::pair(end.Lat, end.Lon), std::pair(-37.6528211, 143.9264955));
  EXPECT_EQ(FaultIn([] { DestPoint(60, 30, std::nan(""), 1, 9); }), 6);
  EXPECT_EQ(FaultIn([] { MercY2Lat(1e10, 9); }), 6);
  EXPECT_EQ(FaultIn([] { Lat2MercY(-91); }), 6);
  EXPECT_EQ(FaultIn([] { Ll2Utm(60, 1e7); }), 6);
}

TEST(Nmea, LengthChoosesTheForm) {
  const std::tuple<const char*, int, double> rows[] = {
      {"5545.1234", 55, 45.1234}, {"03745.1234", 37, 45.1234}, {"5545.12345", 554, 45.12345}, {"", 0, 0},
      {"545.123", 0, 0},          {"abcd.efgh", 0, 0},         {"12.345678", 12, 12.345678}};
  for (const auto& [text, whole, minutes] : rows)
    EXPECT_EQ(Nmea2Deg(text), whole + static_cast<double>(static_cast<float>(minutes / 60))) << text;
  for (const char* bad : {"554512345", "0374512345", "1.2345678"})
    EXPECT_EQ(FaultIn([&] { Nmea2Deg(bad); }), 5) << bad;
  EXPECT_EQ(FaultIn([] { Nmea2Deg("9991.1E999"); }), 6);
}

}  // namespace
}  // namespace sondrix
