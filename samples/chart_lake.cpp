#include "samples/chart_lake.h"

#include "samples/open_file.h"
#include "samples/text_steps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;

constexpr double HalfLength = 1000, HalfWidth = 520;  // metres, before the bays

struct Island {
  double X, Y, Radius, Turn;  // metres, radians
};
constexpr Island Islands[] = {{-430, 130, 70, 0.4}, {300, -110, 105, 2.1}, {540, 190, 36, 1.0}};

struct Mound {
  double X, Y, Height, Width;  // metres; a negative height is a hole
};
constexpr Mound Mounds[] = {{-120, 210, 3.6, 38}, {90, 120, 2.2, 22},    {-640, -60, 2.6, 55},
                            {-210, -190, -5, 45}, {620, -150, -2.5, 70}, {820, 60, 1.5, 30}};

struct WeedBed {
  double X, Y, Radius, Height;  // metres
};
constexpr WeedBed WeedBeds[] = {{-800, 40, 90, 1.3}, {-480, 240, 60, 1.6}, {700, -260, 70, 1.1}};

double ShoreRadius(double angle) {
  const double ellipse = 1 / std::hypot(std::cos(angle) / HalfLength, std::sin(angle) / HalfWidth);
  return ellipse * (1 + 0.06 * std::cos(3 * angle + 0.5) + 0.04 * std::cos(5 * angle + 2) +
                    0.015 * std::cos(11 * angle));
}

double IslandRadius(const Island& island, double angle) {
  return island.Radius * (1 + 0.15 * std::cos(2 * angle + island.Turn) + 0.08 * std::cos(3 * angle));
}

// Metres in which the depth grows to two thirds of what lies off the shore: 35 on most of it, 7 at the wall
// in the south-west.
double ShoreLength(double angle) {
  const double fromWall = std::remainder(angle - 1.3 * Pi, 2 * Pi);
  return 35 - 28 * std::exp(-fromWall * fromWall / 0.08);
}

// The bed without the rise to the shore.
double OpenDepth(double x, double y) {
  double depth = 7.5 + 0.002 * x;
  depth += 2 * std::tanh((-60 - 0.2 * x + 35 * std::sin(x / 150) - y) / 5);  // a drop of 4 m to the south
  const double fromChannel = (y - 170 * std::sin(x / 260) + 40) / 24;
  depth += 3.2 * std::exp(-fromChannel * fromChannel);
  for (const Mound& mound : Mounds) {
    const double away = std::hypot(x - mound.X, y - mound.Y) / mound.Width;
    depth -= mound.Height * std::exp(-away * away / 2);
  }
  depth += 0.06 * std::sin(x / 4.1) * std::sin(y / 3.3) + 0.15 * std::sin((x + 2 * y) / 31);
  return std::max(depth, 0.9);
}

template <typename Radius>
ShoreRing RingOf(double x, double y, double around, bool clockwise, Radius radius) {
  const int corners = std::max(24, static_cast<int>(around / 6));
  ShoreRing ring;
  for (int i = 0; i < corners; ++i) {
    const double angle = (clockwise ? -2 : 2) * Pi * i / corners;
    ring.push_back({x + radius(angle) * std::cos(angle), y + radius(angle) * std::sin(angle)});
  }
  return ring;
}

}  // namespace

double ChartLakeOffShore(double x, double y) {
  double off = ShoreRadius(std::atan2(y, x)) - std::hypot(x, y);
  for (const Island& island : Islands) {
    const double angle = std::atan2(y - island.Y, x - island.X);
    off = std::min(off, std::hypot(x - island.X, y - island.Y) - IslandRadius(island, angle));
  }
  return off;
}

double ChartLakeDepth(double x, double y) {
  const double off = ChartLakeOffShore(x, y);
  if (off < 0) return std::numeric_limits<double>::quiet_NaN();
  return OpenDepth(x, y) * (1 - std::exp(-off / ShoreLength(std::atan2(y, x))));
}

double ChartLakeWeed(double x, double y) {
  for (const WeedBed& bed : WeedBeds) {
    const double away = std::hypot(x - bed.X, y - bed.Y) / bed.Radius;
    if (away >= 1) continue;
    const double height = bed.Height * (1 - away * away) * (0.8 + 0.2 * std::sin(x / 2.3 + y / 1.7));
    return std::min(height, 0.7 * ChartLakeDepth(x, y));
  }
  return 0;
}

GlobePlace ChartLakeGlobe(double x, double y) {
  return UtmGlobePlace({ChartLakeEasting + x, ChartLakeNorthing + y}, ChartLakeZone);
}

PlanePlace ChartLakePlane(const GlobePlace& place) {
  const PlanePlace utm = UtmPlace(place, ChartLakeZone);
  return {utm.X - ChartLakeEasting, utm.Y - ChartLakeNorthing};
}

std::vector<ShoreRing> ChartLakeShore() {
  std::vector<ShoreRing> rings = {RingOf(0, 0, 2 * Pi * HalfLength, false, ShoreRadius)};
  for (const Island& island : Islands) {
    rings.push_back(RingOf(island.X, island.Y, 2 * Pi * island.Radius, true,
                           [&](double angle) { return IslandRadius(island, angle); }));
  }
  return rings;
}

std::string ChartLakeShoreJson() {
  std::string text =
      "{\"type\":\"FeatureCollection\",\"features\":[{\"type\":\"Feature\","
      "\"properties\":{\"name\":\"lake\"},\"geometry\":{\"type\":\"Polygon\",\"coordinates\":[";
  bool isFirstRing = true;
  for (const ShoreRing& ring : ChartLakeShore()) {
    text += isFirstRing ? "[" : ",[";
    isFirstRing = false;
    for (std::size_t i = 0; i <= ring.size(); ++i) {
      const PlanePlace& corner = ring[i % ring.size()];
      const GlobePlace place = ChartLakeGlobe(corner.X, corner.Y);
      text += i == 0 ? "\n[" : ",\n[";
      AddFixed(text, place.Lon, 8);
      text += ',';
      AddFixed(text, place.Lat, 8);
      text += ']';
    }
    text += ']';
  }
  return text += "]}}]}\n";
}

bool WriteChartLakeBed(const std::string& path, double cell) {
  constexpr double east = 1150, north = 650;  // of the middle, metres
  const auto columns = static_cast<std::int64_t>(std::ceil(2 * east / cell));
  const auto rows = static_cast<std::int64_t>(std::ceil(2 * north / cell));
  std::string text = "ncols ";
  AddNumber(text, columns);
  text += "\nnrows ";
  AddNumber(text, rows);
  text += "\nxllcorner ";
  AddFixed(text, ChartLakeEasting - east, 3);
  text += "\nyllcorner ";
  AddFixed(text, ChartLakeNorthing - north, 3);
  text += "\ncellsize ";
  AddFixed(text, cell, 3);
  text += "\nNODATA_value -9999\n";
  for (std::int64_t row = 0; row < rows; ++row) {
    const double y = -north + cell * (static_cast<double>(rows - row) - 0.5);
    for (std::int64_t column = 0; column < columns; ++column) {
      const double depth = ChartLakeDepth(-east + cell * (static_cast<double>(column) + 0.5), y);
      if (column > 0) text += ' ';
      if (std::isnan(depth)) {
        text += "-9999";
      } else {
        AddFixed(text, depth, 3);
      }
    }
    text += '\n';
  }
  const SampleFile file = OpenSample(path);
  return file && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
         std::fflush(file.get()) == 0;
}

}  // namespace sondrix
