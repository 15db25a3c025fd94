#include "samples/polish_map.h"

#include "samples/lake.h"
#include "samples/text_steps.h"

#include <cmath>
#include <string_view>
#include <vector>

namespace sondrix {

namespace {

constexpr double West = 0, East = 95, North = 40, South = -90;  // metres
constexpr double VertexStep = 1.5;                              // metres along a contour
constexpr double Break = 6;  // metres between two vertices of different branches
constexpr int ShallowestContour = 2, DeepestContour = 13;  // metres

constexpr double CopyStepLat = 0.002, CopyStepLon = 0.003;  // degrees from copy to copy
constexpr std::int64_t CopiesInRow = 100;

struct Vertex {
  double Lat, Lon;
};

struct Contour {
  int Depth;
  std::vector<Vertex> Vertices;
};

// The northernmost y where the bottom passes the depth on that meridian; South where it doesn't.
double CrossingAt(double x, double depth) {
  constexpr double step = 0.5;
  double y = North;
  while (y > South && LakeDepth(x, y) < depth) y -= step;
  if (y <= South || y == North) return South;
  double shallow = y + step;
  for (int i = 0; i < 20; ++i) {
    const double middle = (shallow + y) / 2;
    (LakeDepth(x, middle) < depth ? shallow : y) = middle;
  }
  return y;
}

std::vector<Contour> Contours() {
  std::vector<Contour> contours;
  for (int depth = ShallowestContour; depth <= DeepestContour; ++depth) {
    Contour contour{depth, {}};
    double last = South;
    const auto finish = [&] {
      if (contour.Vertices.size() > 2) contours.push_back(contour);
      contour.Vertices.clear();
    };
    for (double x = West; x <= East; x += VertexStep) {
      const double y = CrossingAt(x, depth);
      if (y == South || std::abs(y - last) > Break) finish();
      if (y != South) {
        const LakePlace place = LakePlaceOf(x, y);
        contour.Vertices.push_back({place.Lat, place.Lon});
      }
      last = y;
    }
    finish();
  }
  return contours;
}

void AddData(std::string& text, std::string_view key, const std::vector<Vertex>& vertices, std::size_t every,
             const Vertex& shift) {
  text += key;
  for (std::size_t i = 0; i < vertices.size(); i += every) {
    text += i == 0 ? "=(" : ",(";
    AddFixed(text, vertices[i].Lat + shift.Lat, 6);
    text += ',';
    AddFixed(text, vertices[i].Lon + shift.Lon, 6);
    text += ')';
  }
  text += "\r\n";
}

void AddObject(std::string& text, std::string_view head, std::string_view label,
               const std::vector<Vertex>& vertices, const Vertex& shift) {
  text += head;
  ((text += "Label=") += label) += "\r\n";
  AddData(text, "Data0", vertices, 1, shift);
  text += "[END]\r\n\r\n";
}

constexpr std::string_view Head =
    "; A lake\r\n\r\n[IMG ID]\r\nID=00001112\r\nName=Lake\r\nElevation=M\r\nPreprocess=F\r\nCodePage=1251\r\n"
    "LblCoding=9\r\nTreSize=511\r\nRgnLimit=127\r\nPOIIndex=Y\r\nLevels=2\r\nLevel0=24\r\nLevel1=18\r\nZoom0="
    "0\r\n"
    "Zoom1=1\r\n[END-IMG ID]\r\n\r\n";
constexpr std::string_view ContourHead = "[POLYLINE]\r\nType=0x22\r\n";
constexpr std::string_view RoadHead = "[POLYLINE]\r\nType=0x06\r\n";

void AddPlaces(std::string& text, const Vertex& shift) {
  struct Place {
    std::string_view Name;
    double X, Y;
  };
  // The second is "bay" in windows-1251.
  constexpr Place places[] = {{"Pier", 2, 6}, {"\xC7\xE0\xEB\xE8\xE2", 70, -60}, {"4.5", 28, -12}};
  for (const Place& place : places) {
    const LakePlace at = LakePlaceOf(place.X, place.Y);
    AddObject(text, "[POI]\r\nType=0x2F09\r\n", place.Name, {{at.Lat, at.Lon}}, shift);
  }
}

void AddShore(std::string& text, const Vertex& shift) {
  std::vector<Vertex> shore;
  constexpr double corners[][2] = {{West, North}, {East, North}, {East, South}, {West, South}, {West, North}};
  for (const auto& corner : corners) {
    const LakePlace at = LakePlaceOf(corner[0], corner[1]);
    shore.push_back({at.Lat, at.Lon});
  }
  AddObject(text, "[POLYGON]\r\nType=0x3C\r\n", "Lake", shore, shift);
  AddObject(text, RoadHead, "", shore, shift);
  AddObject(text, ContourHead, "0", shore, shift);
}

void AddContour(std::string& text, const Contour& contour, const Vertex& shift) {
  const bool odd = contour.Depth % 2 != 0;
  text += odd ? "[polyline]\r\nTYPE=0x22\r\nLABEL=" : "[POLYLINE]\r\nType=0x22\r\nLabel=";
  AddNumber(text, contour.Depth);
  text += "\r\nEndLevel=1\r\n";
  AddData(text, "Data0", contour.Vertices, 1, shift);
  // The coarse shape of the same line for a smaller scale.
  if (contour.Depth % 5 == 0) AddData(text, "Data1", contour.Vertices, 4, shift);
  text += "[END]\r\n\r\n";
}

TextStep Layout() {
  return [contours = Contours()](std::string& text, std::int64_t step) {
    const std::int64_t row = step / CopiesInRow;
    const Vertex shift{CopyStepLat * static_cast<double>(step % CopiesInRow),
                       CopyStepLon * static_cast<double>(row)};
    if (step == 0) text += Head;
    AddPlaces(text, shift);
    AddShore(text, shift);
    for (const Contour& contour : contours) AddContour(text, contour, shift);
  };
}

}  // namespace

std::string PolishMap() { return StepsText(Layout(), 1); }

bool WritePolishMap(const std::string& path, std::int64_t bytes) { return WriteSteps(path, Layout(), bytes); }

}  // namespace sondrix
