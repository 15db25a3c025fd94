#include "samples/made_waters.h"

#include "samples/made_bed.h"
#include "samples/made_water_table.h"
#include "samples/made_ways.h"
#include "samples/open_file.h"
#include "samples/text_steps.h"
#include "samples/utm_plane.h"
#include "samples/xorshift.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <system_error>
#include <vector>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr int Zone = 37;
constexpr double Easting = 431'000, Northing = 6'183'000;

// Of standard deviation 1 (Box and Muller 1958).
double Normal(XorShift& random) {
  const double radius = std::sqrt(-2 * std::log(0.5 - random.Signed() / 2));
  return radius * std::cos(Pi * random.Signed());
}

// A water as a seed draws it.
class Drawn {
 public:
  Drawn(const MadeWater& water, std::uint32_t seed)
      : water_(water), random_(SeedOf(water, seed)), shores_(Shores()), bed_(Bed()) {}

  PlanePlace Utm(double u, double v) const {
    return {Easting + u * cos_ - v * sin_, Northing + u * sin_ + v * cos_};
  }

  // Not a number on land.
  double DepthAt(const PlanePlace& utm) const {
    const double x = utm.X - Easting, y = utm.Y - Northing;
    const double u = x * cos_ + y * sin_, v = y * cos_ - x * sin_;
    double off = -1;
    for (const MadeShore& shore : shores_) off = std::max(off, shore.Off(u, v));
    return off <= 0 ? std::nan("") : bed_.Depth(u, v, off);
  }

  bool WriteSoundings(const std::string& csvPath, const std::string& xyzPath);
  bool WriteBed(const std::string& path) const;

 private:
  static std::uint32_t SeedOf(const MadeWater& water, std::uint32_t seed) {
    std::uint32_t mixed = 2166136261U ^ seed;  // Fowler, Noll and Vo
    for (const char letter : water.name) mixed = (mixed ^ static_cast<std::uint8_t>(letter)) * 16777619U;
    return mixed;
  }

  std::vector<MadeShore> Shores() {
    for (int i = 0; i < 16; ++i) random_.Next();
    std::vector<MadeShore> shores;
    for (const MadeBasin& basin : water_.basins)
      shores.emplace_back(basin.u, basin.v, basin.halfLength, basin.halfWidth, water_.ragged, random_);
    return shores;
  }

  MadeBed Bed() {
    double length = 0, width = 0;
    for (const MadeBasin& basin : water_.basins) {
      length = std::max(length, std::abs(basin.u) + basin.halfLength);
      width = std::max(width, std::abs(basin.v) + basin.halfWidth);
    }
    return {water_.bed, length, width, random_};
  }

  const MadeWater& water_;
  XorShift random_;
  double cos_ = std::cos(water_.turn * Pi / 180), sin_ = std::sin(water_.turn * Pi / 180);
  std::vector<MadeShore> shores_;
  MadeBed bed_;
};

bool WriteText(const std::string& path, const std::string& text) {
  const SampleFile file = OpenSample(path);
  return file && std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
         std::fflush(file.get()) == 0;
}

bool Drawn::WriteSoundings(const std::string& csvPath, const std::string& xyzPath) {
  constexpr double tripSeconds = 86'400;
  std::string csv = water_.hasTimes ? "latitude,longitude,depth,time\n" : "latitude,longitude,depth\n";
  std::string xyz;
  double start = 1'718'870'400;
  for (const MadePlan& plan : water_.plans) {
    double time = start;
    start += tripSeconds;
    for (const MadeShore& shore : shores_) {
      for (const PlanePlace& place : MadeWay(plan, shore, random_)) {
        const PlanePlace utm = Utm(place.X, place.Y);
        const double depth = std::max(0.05, DepthAt(utm) + water_.noise * Normal(random_));
        const GlobePlace globe = UtmGlobePlace(utm, Zone);
        AddFixed(csv, globe.Lat, 8);
        csv += ',';
        AddFixed(csv, globe.Lon, 8);
        csv += ',';
        AddFixed(csv, depth, 3);
        if (water_.hasTimes) {
          csv += ',';
          AddFixed(csv, time += plan.step / 1.8, 1);
        }
        csv += '\n';
        AddFixed(xyz, utm.X, 3);
        xyz += ' ';
        AddFixed(xyz, utm.Y, 3);
        xyz += ' ';
        AddFixed(xyz, depth, 3);
        xyz += '\n';
      }
    }
  }
  return WriteText(csvPath, csv) && WriteText(xyzPath, xyz);
}

bool Drawn::WriteBed(const std::string& path) const {
  constexpr double ragged = 1.35;  // times the half axes: no shore goes further
  double west = Easting, east = Easting, south = Northing, north = Northing;
  for (const MadeShore& shore : shores_) {
    const double u = ragged * shore.halfLength, v = ragged * shore.halfWidth;
    for (const auto& [du, dv] : {PlanePlace{u, v}, {u, -v}, {-u, v}, {-u, -v}}) {
      const PlanePlace corner = Utm(shore.u + du, shore.v + dv);
      west = std::min(west, corner.X);
      east = std::max(east, corner.X);
      south = std::min(south, corner.Y);
      north = std::max(north, corner.Y);
    }
  }
  const double cell = std::round(water_.lineSpacing / 6 * 10) / 10;
  west = std::floor(west);
  south = std::floor(south);
  const auto columns = static_cast<std::int64_t>(std::ceil((east - west) / cell));
  const auto rows = static_cast<std::int64_t>(std::ceil((north - south) / cell));
  std::string text = "ncols ";
  AddNumber(text, columns);
  text += "\nnrows ";
  AddNumber(text, rows);
  text += "\nxllcorner ";
  AddFixed(text, west, 3);
  text += "\nyllcorner ";
  AddFixed(text, south, 3);
  text += "\ncellsize ";
  AddFixed(text, cell, 3);
  text += "\nNODATA_value -9999\n";
  for (std::int64_t row = 0; row < rows; ++row) {
    for (std::int64_t column = 0; column < columns; ++column) {
      const double depth = DepthAt({west + cell * (static_cast<double>(column) + 0.5),
                                    south + cell * (static_cast<double>(rows - row) - 0.5)});
      if (column > 0) text += ' ';
      if (std::isnan(depth)) {
        text += "-9999";
      } else {
        AddFixed(text, depth, 3);
      }
    }
    text += '\n';
  }
  return WriteText(path, text);
}

}  // namespace

const MadeWater* MadeWaterOf(std::string_view name) {
  for (const MadeWater& water : MadeWaters()) {
    if (water.name == name) return &water;
  }
  return nullptr;
}

std::string MadeWaterLines() {
  std::string lines;
  for (const MadeWater& water : MadeWaters()) {
    lines.append(water.name).append(" ");
    AddNumber(lines, std::llround(water.lineSpacing));
    lines.append(" ").append(water.what).append("\n");
  }
  return lines;
}

bool WriteMadeWater(const MadeWater& water, const std::string& folder, std::uint32_t seed) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return false;
  const std::string stem = folder + '/' + std::string(water.name);
  Drawn drawn(water, seed);
  return drawn.WriteSoundings(stem + ".csv", stem + ".xyz") && drawn.WriteBed(stem + "-bed.asc");
}

}  // namespace sondrix
