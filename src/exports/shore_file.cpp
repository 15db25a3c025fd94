#include "exports/shore_file.h"

#include "core/files.h"
#include "exports/cut_lines.h"
#include "exports/gdal_handles.h"

#include <algorithm>
#include <cmath>
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>
#include <type_traits>
#include <utility>

namespace sondrix {
namespace {

struct ProjectionEnd {
  void operator()(OGRCoordinateTransformationH projection) const {
    OCTDestroyCoordinateTransformation(projection);
  }
};
using Projection = std::unique_ptr<std::remove_pointer_t<OGRCoordinateTransformationH>, ProjectionEnd>;

struct GeometryEnd {
  void operator()(OGRGeometryH geometry) const { OGR_G_DestroyGeometry(geometry); }
};
using Geometry = std::unique_ptr<std::remove_pointer_t<OGRGeometryH>, GeometryEnd>;

bool Touch(const PlaneBox& a, const PlaneBox& b) {
  return a.west <= b.east && a.east >= b.west && a.south <= b.north && a.north >= b.south;
}

PlaneBox Grown(const PlaneBox& box, double by) {
  return {box.west - by, box.south - by, box.east + by, box.north + by};
}

void Extend(PlaneBox& box, const PlaneLine& line) {
  for (const PlanePoint& point : line) {
    box.west = std::min(box.west, point.x);
    box.east = std::max(box.east, point.x);
    box.south = std::min(box.south, point.y);
    box.north = std::max(box.north, point.y);
  }
}

constexpr PlaneBox Nowhere = {HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};

PlaneLine PointsOf(OGRGeometryH geometry) {
  PlaneLine points(static_cast<std::size_t>(OGR_G_GetPointCount(geometry)));
  if (points.empty()) return points;
  OGR_G_GetPoints(geometry, &points.data()->x, sizeof(PlanePoint), &points.data()->y, sizeof(PlanePoint),
                  nullptr, 0);
  return points;
}

// Reads one layer after the other into a shore.
class ShoreReader {
 public:
  ShoreReader(const std::string& crs, const PlaneBox& box, const std::function<bool()>& isToEnd)
      : crs_(crs), box_(box), isToEnd_(isToEnd) {}

  void Read(GDALDatasetH file) {
    const Reference chart = ReferenceOf(crs_, messages_);
    for (int i = 0; i < GDALDatasetGetLayerCount(file); ++i) {
      const OGRLayerH layer = GDALDatasetGetLayer(file, i);
      OGRSpatialReferenceH reference = OGR_L_GetSpatialRef(layer);
      Reference degrees;
      if (reference == nullptr) {
        if (!MayBeDegrees(layer)) throw CantExport("it doesn't say in which projection its coordinates are");
        degrees = ReferenceOf("EPSG:4326", messages_);
        reference = degrees.get();
      }
      toChart_.reset(OCTNewCoordinateTransformation(reference, chart.get()));
      const Projection fromChart(OCTNewCoordinateTransformation(chart.get(), reference));
      if (!toChart_ || !fromChart) messages_.Throw("its coordinates can't be projected");
      for (const PlaneBox& window : WindowsOf(fromChart)) ReadLayer(layer, window);
    }
  }

  Dataset Open(const std::string& path) {
    if (!IdOf(path)) throw CantExport("it isn't there");
    GDALAllRegister();
    Dataset file(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
    if (!file) throw CantExport("it is no vector file that GDAL reads");
    messages_.Forget();
    return file;
  }

  Shore& Found() { return shore_; }

 private:
  static bool MayBeDegrees(OGRLayerH layer) {
    OGREnvelope extent;
    return OGR_L_GetExtent(layer, &extent, TRUE) != OGRERR_NONE ||
           (extent.MinX >= -180 && extent.MaxX <= 180 && extent.MinY >= -90 && extent.MaxY <= 90);
  }

  // Where a layer's coordinates are to be looked at: two windows beside 180 degrees.
  std::vector<PlaneBox> WindowsOf(const Projection& fromChart) const {
    const PlaneBox cut = Grown(box_, std::max(box_.east - box_.west, box_.north - box_.south));
    constexpr int pointsOfASide = 21;
    PlaneBox window;
    if (OCTTransformBounds(fromChart.get(), cut.west, cut.south, cut.east, cut.north, &window.west,
                           &window.south, &window.east, &window.north, pointsOfASide) == 0)
      throw CantExport("its projection doesn't reach the soundings");
    if (window.west <= window.east) return {window};
    return {{window.west, window.south, 180, window.north}, {-180, window.south, window.east, window.north}};
  }

  void ReadLayer(OGRLayerH layer, const PlaneBox& window) {
    window_ = window;
    OGR_L_SetSpatialFilterRect(layer, window.west, window.south, window.east, window.north);
    OGR_L_ResetReading(layer);
    for (std::size_t count = 0;; ++count) {
      constexpr std::size_t between = 256;
      if (count % between == 0 && isToEnd_ && isToEnd_()) throw EndAsked();
      const Feature feature(OGR_L_GetNextFeature(layer));
      if (!feature) break;
      const OGRGeometryH geometry = OGR_F_GetGeometryRef(feature.get());
      if (geometry == nullptr) continue;
      // Curves become lines.
      const Geometry plain(OGR_G_GetLinearGeometry(geometry, 0, nullptr));
      if (plain) Take(plain.get());
    }
    messages_.ThrowIfFailed();
  }

  void Take(OGRGeometryH geometry) {
    const OGRwkbGeometryType type = OGR_GT_Flatten(OGR_G_GetGeometryType(geometry));
    if (OGR_GT_IsSubClassOf(type, wkbPolygon) != 0) return TakeArea(geometry);
    if (OGR_GT_IsSubClassOf(type, wkbLineString) != 0) return TakeLine(PointsOf(geometry));
    if (type == wkbPoint || type == wkbMultiPoint) return;
    for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i) Take(OGR_G_GetGeometryRef(geometry, i));
  }

  void TakeArea(OGRGeometryH polygon) {
    std::vector<PlaneLine> rings;
    for (int i = 0; i < OGR_G_GetGeometryCount(polygon); ++i) {
      PlaneLine ring = CutRing(PointsOf(OGR_G_GetGeometryRef(polygon, i)), window_);
      if (ring.empty() && i == 0) return;
      if (ring.empty()) continue;
      Project(ring);
      rings.push_back(std::move(ring));
    }
    PlaneBox extent = Nowhere;
    if (rings.empty()) return;
    Extend(extent, rings.front());
    if (Touch(extent, box_)) shore_.areas.push_back(std::move(rings));
  }

  void TakeLine(const PlaneLine& whole) {
    for (PlaneLine& line : CutLine(whole, window_)) {
      Project(line);
      PlaneBox extent = Nowhere;
      Extend(extent, line);
      if (Touch(extent, box_)) shore_.lines.push_back(std::move(line));
    }
  }

  void Project(PlaneLine& line) {
    std::vector<double> x(line.size()), y(line.size());
    std::vector<int> isDone(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
      x[i] = line[i].x;
      y[i] = line[i].y;
    }
    OCTTransformEx(toChart_.get(), static_cast<int>(line.size()), x.data(), y.data(), nullptr, isDone.data());
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (isDone[i] == 0 || !std::isfinite(x[i]) || !std::isfinite(y[i]))
        throw CantExport("it has coordinates that can't be projected to " + crs_);
      line[i] = {x[i], y[i]};
    }
  }

  GdalMessages messages_;
  const std::string& crs_;
  const PlaneBox& box_;
  const std::function<bool()>& isToEnd_;
  Projection toChart_;
  PlaneBox window_;  // in the layer's coordinates
  Shore shore_;
};

}  // namespace

Shore ReadShore(const std::string& path, const std::string& crs, const PlaneBox& box,
                const std::function<bool()>& isToEnd) {
  ShoreReader reader(crs, box, isToEnd);
  reader.Read(reader.Open(path).get());
  if (reader.Found().IsEmpty()) throw CantExport("it holds no line or area near the soundings");
  return std::move(reader.Found());
}

}  // namespace sondrix
