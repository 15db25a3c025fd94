#include "exports/geojson.h"

#include "core/files.h"
#include "exports/ordered_text.h"

#include <cmath>
#include <vector>

namespace sondrix {
namespace {

struct Place {
  double longitude = 0, latitude = 0;  // degrees
};

// The places of a line; those at which it begins anew, behind 180 degrees, are marked.
struct Path {
  std::vector<Place> places;
  std::vector<std::size_t> begins;  // of its parts, the first one too

  void Clear() {
    places.clear();
    begins.assign(1, 0);
  }
  // Where the step from the last place to this one goes over 180 degrees, it is cut there on both sides.
  void Add(const Place& to) {
    if (!places.empty() && std::abs(to.longitude - places.back().longitude) > 180) CrossTo(to);
    places.push_back(to);
  }

 private:
  void CrossTo(const Place& to) {
    const Place from = places.back();
    const double side = std::copysign(180, from.longitude);
    const double toEdge = side - from.longitude, whole = to.longitude + 2 * side - from.longitude;
    const double latitude =
        whole == 0 ? from.latitude : from.latitude + (to.latitude - from.latitude) * (toEdge / whole);
    places.push_back({side, latitude});
    begins.push_back(places.size());
    places.push_back({-side, latitude});
  }
};

void PutPlaces(const Path& path, std::size_t begin, std::size_t end, RowText& rows) {
  constexpr std::size_t placeRoom = 2 * NumberRoom + 4;
  char* to = rows.Room((end - begin) * placeRoom + 2);
  *to++ = '[';
  for (std::size_t i = begin; i < end; ++i) {
    if (i > begin) *to++ = ',';
    *to++ = '[';
    to = PutDegrees(to, path.places[i].longitude);
    *to++ = ',';
    to = PutDegrees(to, path.places[i].latitude);
    *to++ = ']';
  }
  *to++ = ']';
  rows.EndAt(to);
}

void PutFeature(const ContourLine& line, const Path& path, RowText& rows) {
  rows.Append(R"({"type":"Feature","properties":{"depth":)");
  rows.EndAt(PutNumber(rows.Room(NumberRoom), line.depth, 3, true));
  rows.Append(line.isIndex ? R"(,"index":true},"geometry":{"type":)"
                           : R"(,"index":false},"geometry":{"type":)");
  const bool isWhole = path.begins.size() == 1;
  rows.Append(isWhole ? R"("LineString","coordinates":)" : R"("MultiLineString","coordinates":[)");
  for (std::size_t part = 0; part < path.begins.size(); ++part) {
    const bool isLast = part + 1 == path.begins.size();
    if (part > 0) rows.Append(",");
    PutPlaces(path, path.begins[part], isLast ? path.places.size() : path.begins[part + 1], rows);
  }
  rows.Append(isWhole ? "}}" : "]}}");
}

}  // namespace

void WriteGeoJson(const ChartData& chart, const ExportRun& run,
                  const std::function<Transform()>& makeToDegrees, OutputFile& file) {
  const std::vector<ContourLine>& lines = chart.contours->lines;
  file.Write("{\n\"type\":\"FeatureCollection\",\n\"features\":[\n");
  const auto makeFormat = [&]() -> FormatItem {
    return [&, toDegrees = makeToDegrees(), path = Path()](std::size_t item, RowText& rows) mutable {
      path.Clear();
      for (const PlanePoint& point : lines[item].points) {
        Place place;
        if (!toDegrees(point.x, point.y, place.longitude, place.latitude))
          throw CantExport("a contour has no place in degrees");
        path.Add(place);
      }
      PutFeature(lines[item], path, rows);
      rows.Append(item + 1 < lines.size() ? ",\n" : "\n");
    };
  };
  WriteInOrder({lines.size(), [&](std::size_t item) { return lines[item].points.size(); }, makeFormat}, run,
               file);
  file.Write("]\n}\n");
}

}  // namespace sondrix
