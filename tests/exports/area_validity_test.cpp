#include "chart/contours.h"
#include "chart/made_models.h"
#include "chart/projection.h"

#include <cmath>
#include <gtest/gtest.h>
#include <ogr_api.h>

namespace sondrix {
namespace {

// As a file with eight decimals of a degree has them.
OGRGeometryH PolygonOf(const DepthArea& area, const Transform& toDegrees) {
  constexpr double parts = 1e8;
  OGRGeometryH polygon = OGR_G_CreateGeometry(wkbPolygon);
  for (const PlaneLine& ring : area.rings) {
    OGRGeometryH line = OGR_G_CreateGeometry(wkbLinearRing);
    for (const PlanePoint& point : ring) {
      double longitude = 0, latitude = 0;
      EXPECT_TRUE(toDegrees(point.x, point.y, longitude, latitude));
      OGR_G_AddPoint_2D(line, std::round(longitude * parts) / parts, std::round(latitude * parts) / parts);
    }
    OGR_G_AddGeometryDirectly(polygon, line);
  }
  return polygon;
}

TEST(DepthAreas, AreValidInDegrees) {
  const Transform toDegrees = ToDegrees("EPSG:32633");
  std::vector<double> depths;
  for (int i = 1; i < 100; ++i) depths.push_back(i * 0.25);
  for (const RoughBed& bed : {RoughBed{11, 120, 80, 0.3, 0.01, 0}, RoughBed{12, 80, 120, 0.05, 0.3, 12},
                              RoughBed{13, 90, 90, 4, 0.05, 0}}) {
    for (const double cell : {0.5, 5.0}) {
      DepthModel model = ModelOf(bed);
      model.shape.cell = cell;
      const Contours contours = ContoursOf(model, depths, nullptr);
      EXPECT_GT(contours.areas.size(), 100U);
      std::size_t invalid = 0;
      for (const DepthArea& area : contours.areas) {
        OGRGeometryH polygon = PolygonOf(area, toDegrees);
        if (!OGR_G_IsValid(polygon)) ++invalid;
        OGR_G_DestroyGeometry(polygon);
      }
      EXPECT_EQ(invalid, 0U) << "of " << contours.areas.size() << ", bed " << bed.seed << ", cell " << cell;
    }
  }
}

}  // namespace
}  // namespace sondrix
