#include "exports/geopackage.h"

#include "exports/geopackage_file.h"
#include "exports/layer_styles.h"
#include "exports/made_file.h"

#include <array>
#include <cmath>
#include <gdal.h>
#include <iterator>
#include <ogr_api.h>
#include <string>

namespace sondrix {
namespace {

constexpr const char* Wgs84 = "EPSG:4326";

enum { Latitude, Longitude, Depth, Time, TripName, Recorded, FateName };
constexpr LayerColumn SoundingColumns[] = {
    {"latitude", OFTReal}, {"longitude", OFTReal}, {"depth", OFTReal},  {"time", OFTReal},
    {"trip", OFTString},   {"recorded", OFTReal},  {"fate", OFTString},
};
constexpr LayerColumn TrackColumns[] = {{"trip", OFTString}};
constexpr LayerColumn ContourColumns[] = {{"depth", OFTReal}, {"index", OFTInteger, OFSTBoolean}};
constexpr LayerColumn AreaColumns[] = {{"depth_min", OFTReal}, {"depth_max", OFTReal}};

// The 64-bit float nearest to the millimetre that a 32-bit one holds.
double Millimetres(float metres) { return std::round(static_cast<double>(metres) * 1000) / 1000; }

void SetNumber(OGRFeatureH feature, int column, double value) {
  if (std::isnan(value)) {
    OGR_F_SetFieldNull(feature, column);
  } else {
    OGR_F_SetFieldDouble(feature, column, value);
  }
}

void SetPoint(OGRFeatureH feature, const Sounding& sounding) {
  if (!sounding.HasPosition()) {
    OGR_F_SetGeometryDirectly(feature, nullptr);
    return;
  }
  OGRGeometryH point = OGR_F_GetGeometryRef(feature);
  if (point == nullptr) {
    OGR_F_SetGeometryDirectly(feature, OGR_G_CreateGeometry(wkbPoint));
    point = OGR_F_GetGeometryRef(feature);
  }
  OGR_G_SetPoint_2D(point, 0, sounding.longitude, sounding.latitude);
}

void AddSoundings(GeopackageFile& file, const Survey& survey, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("soundings", wkbPoint, Wgs84, SoundingColumns);
  const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
  std::array<std::string, FateCount> fates;
  for (std::size_t i = 0; i < fates.size(); ++i) fates[i] = NameOf(static_cast<Fate>(i));
  for (const Trip& trip : survey.trips) {
    OGR_F_SetFieldString(feature.get(), TripName, trip.name.c_str());
    for (std::size_t b = 0; b < trip.soundings.BlockCount(); ++b) {
      const std::span<const Sounding> block = trip.soundings.Block(b);
      for (const Sounding& sounding : block) {
        SetNumber(feature.get(), Latitude, sounding.latitude);
        SetNumber(feature.get(), Longitude, sounding.longitude);
        SetNumber(feature.get(), Depth, Millimetres(sounding.depth));
        SetNumber(feature.get(), Time, sounding.time);
        SetNumber(feature.get(), Recorded, Millimetres(sounding.recorded));
        OGR_F_SetFieldString(feature.get(), FateName, fates[static_cast<std::size_t>(sounding.fate)].c_str());
        SetPoint(feature.get(), sounding);
        file.Add(layer, feature);
      }
      run.EndIfAsked();
      run.Advance(block.size());
    }
  }
}

// The lines of a trip; one of a single place is none.
class TrackLines {
 public:
  TrackLines() : lines_(OGR_G_CreateGeometry(wkbMultiLineString)) {}
  TrackLines(const TrackLines&) = delete;
  TrackLines& operator=(const TrackLines&) = delete;
  ~TrackLines() { OGR_G_DestroyGeometry(lines_); }

  void AddPoint(const Sounding& sounding) {
    if (line_ == nullptr) line_ = OGR_G_CreateGeometry(wkbLineString);
    OGR_G_AddPoint_2D(line_, sounding.longitude, sounding.latitude);
  }
  void EndLine() {
    if (line_ == nullptr) return;
    if (OGR_G_GetPointCount(line_) > 1) {
      OGR_G_AddGeometryDirectly(lines_, line_);
    } else {
      OGR_G_DestroyGeometry(line_);
    }
    line_ = nullptr;
  }
  // For a feature, which copies it.
  OGRGeometryH Lines() const { return lines_; }
  bool AreNone() const { return OGR_G_GetGeometryCount(lines_) == 0; }

 private:
  OGRGeometryH lines_, line_ = nullptr;
};

void AddTracks(GeopackageFile& file, const Survey& survey, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("tracks", wkbMultiLineString, Wgs84, TrackColumns);
  for (const Trip& trip : survey.trips) {
    run.EndIfAsked();
    TrackLines lines;
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
      const Sounding& sounding = trip.soundings[i];
      if (sounding.beginsLine) lines.EndLine();
      if (sounding.fate == Fate::Used && sounding.HasPosition()) lines.AddPoint(sounding);
    }
    lines.EndLine();
    if (lines.AreNone()) continue;
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
    OGR_F_SetFieldString(feature.get(), 0, trip.name.c_str());
    OGR_F_SetGeometry(feature.get(), lines.Lines());
    file.Add(layer, feature);
  }
}

OGRGeometryH GeometryOf(const PlaneLine& points, OGRwkbGeometryType type) {
  const OGRGeometryH geometry = OGR_G_CreateGeometry(type);
  OGR_G_SetPoints(geometry, static_cast<int>(points.size()), &points.data()->x, sizeof(PlanePoint),
                  &points.data()->y, sizeof(PlanePoint), nullptr, 0);
  return geometry;
}

void AddContours(GeopackageFile& file, const ChartData& chart, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("contours", wkbLineString, chart.crs, ContourColumns);
  for (const ContourLine& line : chart.contours->lines) {
    run.EndIfAsked();
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
    OGR_F_SetFieldDouble(feature.get(), 0, line.depth);
    OGR_F_SetFieldInteger(feature.get(), 1, line.isIndex ? 1 : 0);
    OGR_F_SetGeometryDirectly(feature.get(), GeometryOf(line.points, wkbLineString));
    file.Add(layer, feature);
  }
}

void AddAreas(GeopackageFile& file, const ChartData& chart, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("areas", wkbPolygon, chart.crs, AreaColumns);
  for (const DepthArea& area : chart.contours->areas) {
    run.EndIfAsked();
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
    OGR_F_SetFieldDouble(feature.get(), 0, area.depthMin);
    OGR_F_SetFieldDouble(feature.get(), 1, area.depthMax);
    const OGRGeometryH polygon = OGR_G_CreateGeometry(wkbPolygon);
    for (const PlaneLine& ring : area.rings)
      OGR_G_AddGeometryDirectly(polygon, GeometryOf(ring, wkbLinearRing));
    OGR_F_SetGeometryDirectly(feature.get(), polygon);
    file.Add(layer, feature);
  }
}

// Where QGIS looks for what it saves itself.
void AddStyles(GeopackageFile& file, const ChartData& chart) {
  constexpr LayerColumn columns[] = {{"f_table_catalog", OFTString},
                                     {"f_table_schema", OFTString},
                                     {"f_table_name", OFTString},
                                     {"f_geometry_column", OFTString},
                                     {"styleName", OFTString},
                                     {"styleQML", OFTString},
                                     {"styleSLD", OFTString},
                                     {"useAsDefault", OFTInteger, OFSTBoolean},
                                     {"description", OFTString},
                                     {"owner", OFTString},
                                     {"ui", OFTString},
                                     {"update_time", OFTDateTime}};
  const OGRLayerH layer = file.AddTable("layer_styles", columns);
  const auto add = [&](const char* name, const std::string& style) {
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
    const std::string stamp = StampOf(chart.date) + "Z";
    const char* const values[] = {"", "",  name, "geom", name, style.c_str(),
                                  "", "1", "",   "",     "",   stamp.c_str()};
    for (std::size_t i = 0; i < std::size(values); ++i)
      OGR_F_SetFieldString(feature.get(), static_cast<int>(i), values[i]);
    file.Add(layer, feature);
  };
  add("soundings", SoundingStyle());
  add("tracks", TrackStyle());
  if (chart.contours == nullptr) return;
  add("contours", ContourStyle());
  add("areas", AreaStyle(chart.contours->areas));
}

void MakeGeopackage(const Survey& survey, const ChartData& chart, const ExportRun& run,
                    const std::string& path) {
  GeopackageFile file(path, chart.date);
  AddSoundings(file, survey, run);
  AddTracks(file, survey, run);
  if (chart.contours != nullptr) {
    AddContours(file, chart, run);
    AddAreas(file, chart, run);
  }
  AddStyles(file, chart);
  file.Close(run);
}

}  // namespace

void WriteGeopackage(const Survey& survey, const ChartData& chart, const ExportRun& run,
                     const std::string& path) {
  MakeFile(path, [&] { MakeGeopackage(survey, chart, run, path); });
}

}  // namespace sondrix
