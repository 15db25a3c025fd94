#include "samples/chart_lake.h"

#include "geo/utm.h"

#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

// What the truth of the made lake rests on.

TEST(ChartLake, PlaneIsThatOfTheZone) {
  for (const auto& [x, y] : {PlanePlace{0, 0}, {-990, 400}, {870, -510}}) {
    const GlobePlace place = ChartLakeGlobe(x, y);
    const UtmPosition utm = Ll2Utm(place.Lat, place.Lon);
    EXPECT_NEAR(utm.Easting, ChartLakeEasting + x, 0.02);
    EXPECT_NEAR(utm.Northing, ChartLakeNorthing + y, 0.02);
    const PlanePlace back = ChartLakePlane(place);
    EXPECT_NEAR(back.X, x, 1e-5);
    EXPECT_NEAR(back.Y, y, 1e-5);
    // A metre to the north of the plane, seen from the globe.
    const GlobePlace north = ChartLakeGlobe(x, y + 1);
    const double course =
        std::atan2((north.Lon - place.Lon) * std::cos(place.Lat * 0.0174533), north.Lat - place.Lat);
    EXPECT_NEAR(UtmConvergence(place, ChartLakeZone), course, 2e-4);
  }
}

TEST(ChartLake, ShoreLiesWhereTheDepthEnds) {
  const std::vector<ShoreRing> rings = ChartLakeShore();
  ASSERT_EQ(rings.size(), 4U);
  for (const ShoreRing& ring : rings) {
    double area = 0;  // counterclockwise: positive
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const PlanePlace& a = ring[i];
      const PlanePlace& b = ring[(i + 1) % ring.size()];
      EXPECT_LT(std::hypot(b.X - a.X, b.Y - a.Y), 12);
      EXPECT_NEAR(ChartLakeOffShore(a.X, a.Y), 0, 1e-6);
      area += a.X * b.Y - b.X * a.Y;
    }
    EXPECT_EQ(area > 0, &ring == rings.data());
  }
  EXPECT_TRUE(std::isnan(ChartLakeDepth(-430, 130)));  // on an island
  EXPECT_TRUE(std::isnan(ChartLakeDepth(1200, 0)));
}

}  // namespace
}  // namespace sondrix
