#include "chart/projection.h"
#include "core/files.h"
#include "exports/contour_files.h"
#include "exports/export_formats.h"
#include "exports/gdal_handles.h"
#include "exports/geojson.h"
#include "exports/geotiff.h"
#include "exports/made_chart.h"
#include "exports/shore_file.h"
#include "temporary_folder.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

std::string ReasonOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const CantExport& reason) {
    return reason.what();
  } catch (const EndAsked&) {
    return "end";
  }
  return {};
}

std::string GeoJsonOf(const ChartData& chart, int threads, const std::function<Transform()>& makeToDegrees) {
  const TemporaryFolder folder;
  OutputFile file(folder.Path("a"));
  WriteGeoJson(chart, {.threads = threads}, makeToDegrees, file);
  file.Close();
  return folder.Read("a");
}

TEST(Geotiff, HoldsTheModelAndIsTheSameForAnyThreads) {
  const TemporaryFolder folder;
  MadeChart chart;
  WriteGeotiff(chart.data, {}, folder.Path("a.tif"));
  WriteGeotiff(chart.data, {.threads = 3}, folder.Path("b.tif"));
  EXPECT_TRUE(folder.Read("a.tif") == folder.Read("b.tif"));
  chart.data.isZUp = true;
  WriteGeotiff(chart.data, {}, folder.Path("up.tif"));
  for (const bool isUp : {false, true}) {
    const Dataset file(GDALOpen(folder.Path(isUp ? "up.tif" : "a.tif").c_str(), GA_ReadOnly));
    ASSERT_NE(file, nullptr);
    for (int b = 1; b <= 2; ++b) {
      std::vector<float> read(chart.model.shape.CellCount());
      const int size = chart.model.shape.columns;
      const GDALRasterBandH band = GDALGetRasterBand(file.get(), b);
      ASSERT_EQ(GDALRasterIO(band, GF_Read, 0, 0, size, size, read.data(), size, size, GDT_Float32, 0, 0),
                CE_None);
      EXPECT_EQ(std::string(GDALGetDescription(band)), b == 2 ? "uncertainty" : isUp ? "height" : "depth");
      EXPECT_GE(GDALGetOverviewCount(band), 1);
      const std::vector<float>& wanted = b == 1 ? chart.model.depth : chart.model.uncertainty;
      for (std::size_t i = 0; i < read.size(); ++i) {
        const float value = b == 1 && isUp ? -wanted[i] : wanted[i];
        ASSERT_TRUE(read[i] == value || (std::isnan(read[i]) && std::isnan(value))) << i;
      }
    }
  }
  // A single cell has no overview, a single row has.
  MadeChart row(1);
  WriteGeotiff(row.data, {}, folder.Path("cell.tif"));
  row.model.shape.columns = 3000;
  row.model.depth.resize(3000);
  row.model.uncertainty.resize(3000);
  WriteGeotiff(row.data, {}, folder.Path("row.tif"));
  EXPECT_EQ(
      ReasonOf([&] { WriteGeotiff(chart.data, {.isToEnd = [] { return true; }}, folder.Path("c.tif")); }),
      "end");
  EXPECT_NE(ReasonOf([&] { WriteGeotiff(chart.data, {}, folder.Path("none/c.tif")); }), "");
}

TEST(GeoJson, LinesAreCutAt180DegreesAndThreadsDontShow) {
  Contours contours;
  const DepthModel model;
  contours.lines = {{0.5, false, false, {{179, 1}, {181, 2}, {182, 2}}},
                    {2, true, false, {{-3, 4}, {-2, 5}}}};
  const ChartData data = {&model, &contours, "", false, 0};
  const auto wrapped = [] {
    return [](double fromX, double fromY, double& x, double& y) {
      x = fromX > 180 ? fromX - 360 : fromX;
      y = fromY;
      return fromY < 6;
    };
  };
  EXPECT_EQ(
      GeoJsonOf(data, 1, wrapped),
      "{\n\"type\":\"FeatureCollection\",\n\"features\":[\n"
      R"({"type":"Feature","properties":{"depth":0.5,"index":false},"geometry":{"type":"MultiLineString",)"
      R"("coordinates":[[[179.00000000,1.00000000],[180.00000000,1.50000000]],)"
      R"([[-180.00000000,1.50000000],[-179.00000000,2.00000000],[-178.00000000,2.00000000]]]}},)"
      "\n"
      R"({"type":"Feature","properties":{"depth":2,"index":true},"geometry":{"type":"LineString",)"
      R"("coordinates":[[-3.00000000,4.00000000],[-2.00000000,5.00000000]]}})"
      "\n]\n}\n");
  contours.lines[1].points[0].y = 7;
  EXPECT_EQ(ReasonOf([&] { GeoJsonOf(data, 2, wrapped); }), "a contour has no place in degrees");

  MadeChart chart;
  chart.contours.lines.resize(3000, chart.contours.lines[1]);
  const auto toDegrees = [&] { return ToDegrees(chart.data.crs); };
  EXPECT_TRUE(GeoJsonOf(chart.data, 1, toDegrees) == GeoJsonOf(chart.data, 3, toDegrees));
}

TEST(ContourFiles, OpenAgainWithTheirDepths) {
  const MadeChart chart;
  const struct {
    const char *name, *driver, *companion;
    double perDegree;  // coordinates a degree of latitude is long
  } cases[] = {
      {"a.shp", "ESRI Shapefile", "a.dbf", 111000},
      {"a.KML", "LIBKML", nullptr, 1},
      {"a.fgb", "FlatGeobuf", nullptr, 111000},
      {"a.gml", "GML", "a.xsd", 111000},
      {"a.dxf", "DXF", nullptr, 111000},
  };
  for (const auto& [name, driver, companion, perDegree] : cases) {
    SCOPED_TRACE(name);
    const TemporaryFolder folder;
    const std::string path = folder.Path(name);
    ASSERT_EQ(VectorDriverOf(path), driver);
    WriteContours(chart.data, {}, driver, path);
    EXPECT_TRUE(companion == nullptr || IdOf(folder.Path(companion)));
    const Dataset file(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    ASSERT_NE(file, nullptr);
    const OGRLayerH layer = GDALDatasetGetLayer(file.get(), 0);
    ASSERT_EQ(OGR_L_GetFeatureCount(layer, TRUE), 2);
    double sum = 0;
    for (int i = 0; i < 2; ++i) {
      const Feature feature(OGR_L_GetNextFeature(layer));
      const OGRGeometryH line = OGR_F_GetGeometryRef(feature.get());
      const int field = OGR_F_GetFieldIndex(feature.get(), "depth");
      sum += field >= 0 ? OGR_F_GetFieldAsDouble(feature.get(), field) : -OGR_G_GetZ(line, 0);
      OGREnvelope extent;
      OGR_G_GetEnvelope(line, &extent);
      EXPECT_NEAR((extent.MaxY - extent.MinY) / perDegree, 420 / 111000.0, 150 / 111000.0);
    }
    EXPECT_EQ(sum, 7.5);
  }
  for (const char* name : {"a.nothing", "a.xlsx", "a.gdb", "shp"})
    EXPECT_EQ(VectorDriverOf(name), "") << name;
}

TEST(ExportFormats, EndingsAndWhatMustGo) {
  const auto kind = [](const char* path) { return ExportKindOf(path); };
  EXPECT_EQ(kind("a.TIF"), ExportKind::Geotiff);
  EXPECT_EQ(kind("a.json"), ExportKind::GeoJson);
  EXPECT_EQ(kind("a.csb.json"), std::nullopt);
  EXPECT_TRUE(IsKeptEnding("a.csb.json") && IsKeptEnding("a.kmz") && !IsKeptEnding("a.kml"));
  EXPECT_EQ(StaleCompanions("b/a.SHP", ExportKind::Shapefile),
            (std::vector<std::string>{"b/a.qix", "b/a.sbn", "b/a.sbx"}));
  EXPECT_EQ(StaleCompanions("a.gpkg", ExportKind::Geopackage).front(), "a.gpkg-wal");
}

// A pond and a coast in degrees; the box lies about the pond.
constexpr const char* Pond = R"([[37.414,55.573],[37.424,55.573],[37.424,55.575],[37.414,55.573]])";

TEST(ShoreFile, LinesAndAreasNearTheBox) {
  const TemporaryFolder folder;
  const PlaneBox box = {400000, 6159000, 401000, 6160000};
  const auto write = [&](const std::string& geometry) {
    folder.Write("a.geojson", R"({"type":"Feature","properties":{},"geometry":)" + geometry + "}");
    return folder.Path("a.geojson");
  };
  const auto read = [&](const std::string& geometry) {
    return ReadShore(write(geometry), "EPSG:32637", box, {});
  };
  const std::string hole = R"([[37.42,55.5732],[37.423,55.5732],[37.423,55.5742],[37.42,55.5732]])";
  const std::string far = R"([[1,1],[2,1],[2,2],[1,1]])";
  const Shore shore =
      read(R"({"type":"GeometryCollection","geometries":[{"type":"MultiPolygon","coordinates":[[)" +
           std::string(Pond) + "," + hole + "],[" + far +
           R"(]]},{"type":"Point","coordinates":[37.42,55.573]},{"type":"LineString","coordinates":)" + Pond +
           "}]}");
  ASSERT_EQ(shore.areas.size(), 1u);
  ASSERT_EQ(shore.areas[0].size(), 2u);
  ASSERT_EQ(shore.lines.size(), 1u);
  double x = 0, y = 0;
  ASSERT_TRUE(ToPlane("EPSG:32637")(37.414, 55.573, x, y));
  EXPECT_EQ(shore.lines[0].size(), 4u);
  EXPECT_NEAR(shore.lines[0][0].x, x, 0.001);
  EXPECT_NEAR(shore.lines[0][0].y, y, 0.001);
  EXPECT_EQ(shore.areas[0][0].front().x, shore.areas[0][0].back().x);

  // Half the earth with the box on its edge: what is far away is cut off, and goes through no projection.
  const Shore half =
      read(R"({"type":"Polygon","coordinates":[[[37.42,-80],[37.42,80],[-150,80],[-150,-80],[37.42,-80]]]})");
  ASSERT_EQ(half.areas.size(), 1u);
  for (const PlanePoint& point : half.areas[0][0])
    EXPECT_TRUE(std::abs(point.x - 400500) < 2500 && std::abs(point.y - 6159500) < 2500);

  EXPECT_EQ(ReasonOf([&] { read(R"({"type":"Polygon","coordinates":[)" + far + "]}"); }),
            "it holds no line or area near the soundings");
  EXPECT_EQ(ReasonOf([&] { ReadShore(folder.Path("none.shp"), "EPSG:32637", box, {}); }), "it isn't there");
  folder.Write("text.shp", "nothing of the kind");
  EXPECT_EQ(ReasonOf([&] { ReadShore(folder.Path("text.shp"), "EPSG:32637", box, {}); }),
            "it is no vector file that GDAL reads");
  EXPECT_EQ(ReasonOf([&] { ReadShore(write("null"), "EPSG:32637", box, [] { return true; }); }), "end");
  // Without a system: metres are refused, degrees are taken for what they are.
  for (const bool isFar : {true, false}) {
    MadeChart chart;
    if (!isFar) chart.contours.lines = {{1, false, false, {{37.414, 55.573}, {37.42, 55.573}}}};
    WriteContours(chart.data, {}, "ESRI Shapefile", folder.Path("m.shp"));
    DeleteIfThere(folder.Path("m.prj"));
    const std::string reason = ReasonOf([&] { ReadShore(folder.Path("m.shp"), "EPSG:32637", box, {}); });
    EXPECT_EQ(reason, isFar ? "it doesn't say in which projection its coordinates are" : "");
    for (const char* name : {"m.shp", "m.shx", "m.dbf", "m.cpg"}) DeleteIfThere(folder.Path(name));
  }
}

}  // namespace
}  // namespace sondrix
