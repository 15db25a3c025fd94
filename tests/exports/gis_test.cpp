#include "chart/projection.h"
#include "chart/utm_zone.h"
#include "core/files.h"
#include "exports/geopackage.h"
#include "exports/made_survey.h"
#include "temporary_folder.h"

#include <atomic>
#include <cpl_conv.h>
#include <gdal.h>
#include <gtest/gtest.h>
#include <ogr_api.h>

namespace sondrix {
namespace {

TEST(Projection, ThereAndBack) {
  // The places of the second and third by the formulas of the German federal agency for cartography and of
  // Mercator's sphere; the first on its zone's middle.
  const struct {
    const char* crs;
    double longitude, latitude, easting, northing, tolerance;
  } cases[] = {
      {"EPSG:32637", 39, 0, 500000, 0, 0.001},
      {"EPSG:3857", 90, 0, 10018754.171, 0, 0.001},
      {"EPSG:32737", 39, -1e-9, 500000, 10000000, 0.001},
  };
  for (const auto& [crs, longitude, latitude, easting, northing, tolerance] : cases) {
    double x = 0, y = 0, backX = 0, backY = 0;
    ASSERT_TRUE(ToPlane(crs)(longitude, latitude, x, y)) << crs;
    EXPECT_NEAR(x, easting, tolerance) << crs;
    EXPECT_NEAR(y, northing, tolerance) << crs;
    ASSERT_TRUE(ToDegrees(crs)(x, y, backX, backY));
    EXPECT_NEAR(backX, longitude, 1e-9);
    EXPECT_NEAR(backY, latitude, 1e-9);
  }
  double x = 0, y = 0;
  EXPECT_FALSE(ToPlane("EPSG:32637")(39, 1e9, x, y));
  ASSERT_TRUE(
      ToDegrees("EPSG:4326")(37.5, 55.5, x, y));  // x before y, though its axes are the other way round
  EXPECT_EQ(x, 37.5);
  EXPECT_EQ(y, 55.5);
  for (const char* crs : {"EPSG:4326", "EPSG:2222", "EPSG:1", "EPSG:999999"})
    EXPECT_THROW(ToPlane(crs), CantProject);
  EXPECT_THROW(ToDegrees("EPSG:1"), CantProject);
}

TEST(UtmZoneCount, MostSoundingsDecide) {
  const auto crs = [](std::initializer_list<std::pair<double, double>> places) {
    UtmZoneCount zones;
    for (const auto& [longitude, latitude] : places) zones.Add(longitude, latitude);
    return zones.Crs();
  };
  EXPECT_EQ(crs({{37, 55}, {35.99999, 55}, {36, 55}}), "EPSG:32637");
  EXPECT_EQ(crs({{-180, 1}, {180, 1}}), "EPSG:32601");
  EXPECT_EQ(crs({{180, -1}, {180, -1}, {5, 1}}), "EPSG:32760");
  EXPECT_EQ(crs({{3, 84}, {93, 89}, {3, 83.9}}), "EPSG:32661");
  EXPECT_EQ(crs({{3, -80.1}, {93, -89}, {93, -80}}), "EPSG:32761");
  EXPECT_EQ(crs({}), "");
}

struct DatasetEnd {
  void operator()(void* dataset) const { GDALClose(dataset); }
};

// All features of a layer as texts: fields, then geometry; "-" for what is null.
std::string LayerText(GDALDatasetH dataset, const char* name) {
  const OGRLayerH layer = GDALDatasetGetLayerByName(dataset, name);
  if (layer == nullptr) return "none";
  std::string text;
  OGR_L_ResetReading(layer);
  while (const OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
    for (int i = 0; i < OGR_F_GetFieldCount(feature); ++i) {
      text += OGR_F_IsFieldSetAndNotNull(feature, i) != 0 ? OGR_F_GetFieldAsString(feature, i) : "-";
      text += ' ';
    }
    const OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
    char* wkt = nullptr;
    if (geometry != nullptr) OGR_G_ExportToWkt(geometry, &wkt);
    text += std::string(wkt != nullptr ? wkt : "-") + "\n";
    CPLFree(wkt);
    OGR_F_Destroy(feature);
  }
  return text;
}

TEST(Geopackage, HoldsSoundingsAndTracks) {
  const TemporaryFolder folder;
  Survey survey = SmallSurvey();
  Sounding more = survey.trips[2].soundings[1];
  more.latitude = -34;
  survey.trips[2].soundings.Add(more);
  const auto write = [&](const char* name) {
    WriteGeopackage(survey, {.date = 1621063742}, {}, folder.Path(name));
  };
  write("a.gpkg");
  const std::unique_ptr<void, DatasetEnd> dataset(GDALOpenEx(
      folder.Path("a.gpkg").c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
  ASSERT_NE(dataset, nullptr);
  EXPECT_EQ(LayerText(dataset.get(), "soundings"),
            "55.50000001 37.2 12.3 1621063740.25 lake & sea, \"<1>\".sl2 12.3 used POINT (37.2 55.50000001)\n"
            "55.5 37.25 0.5 1621063741 lake & sea, \"<1>\".sl2 0.5 lost POINT (37.25 55.5)\n"
            "55.6 37.3 7.25 1621063742 lake & sea, \"<1>\".sl2 7.25 used POINT (37.3 55.6)\n"
            "- - - - empty.csv - blind -\n"
            "-1e-08 -180 3.473 -0.001 south 3.123 used POINT (-180 -0.00000001)\n"
            "-33 179.99999999 0 - south 0 used POINT (179.99999999 -33)\n"
            "-34 179.99999999 0 - south 0 used POINT (179.99999999 -34)\n");
  EXPECT_EQ(LayerText(dataset.get(), "tracks"),
            "south MULTILINESTRING ((-180 -0.00000001,179.99999999 -33,179.99999999 -34))\n");
  const OGRLayerH indexed =
      GDALDatasetExecuteSQL(dataset.get(), "SELECT count(*) FROM rtree_soundings_geom", nullptr, nullptr);
  ASSERT_NE(indexed, nullptr);
  const OGRFeatureH count = OGR_L_GetNextFeature(indexed);
  EXPECT_EQ(OGR_F_GetFieldAsInteger(count, 0), 6);
  OGR_F_Destroy(count);
  GDALDatasetReleaseResultSet(dataset.get(), indexed);
  // The day of the run leaves no trace, and nothing but the file is left.
  write("b.gpkg");
  EXPECT_TRUE(folder.Read("a.gpkg") == folder.Read("b.gpkg"));
  EXPECT_NE(folder.Read("a.gpkg").find("2021-05-15T07:29:02"), std::string::npos);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("")), {}), 2);

  EXPECT_THROW(WriteGeopackage(survey, {}, {}, folder.Path("none/c.gpkg")), CantExport);
  EXPECT_THROW(WriteGeopackage(survey, {}, {.isToEnd = [] { return true; }}, folder.Path("d.gpkg")),
               EndAsked);
  // All soundings and tracks are written, and the index isn't: a file that is given up gets none.
  std::atomic<int> asked = 0;
  const int asks = 2 * static_cast<int>(survey.trips.size());
  EXPECT_THROW(
      WriteGeopackage(survey, {}, {.isToEnd = [&] { return ++asked > asks; }}, folder.Path("d.gpkg")),
      EndAsked);
  EXPECT_EQ(folder.Read("d.gpkg").find("CREATE VIRTUAL TABLE"), std::string::npos);
}

}  // namespace
}  // namespace sondrix
