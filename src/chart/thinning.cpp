#include "chart/thinning.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace sondrix {
namespace {

// A sounding and the quarter of a cell in which it lies.
struct Placed {
  std::uint64_t quarter = 0;
  std::uint32_t line = 0, sounding = 0;

  bool operator<(const Placed& other) const {
    if (quarter != other.quarter) return quarter < other.quarter;
    return line != other.line ? line < other.line : sounding < other.sounding;
  }
};

}  // namespace

std::vector<ThinnedPoint> ThinSoundings(std::span<const PlaneSounding> soundings,
                                        std::span<const std::uint32_t> lineOf, const GridShape& shape) {
  constexpr int parts = 2;  // of a cell, each way
  const double side = shape.cell / parts;
  std::vector<Placed> placed;
  placed.reserve(soundings.size());
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const double column = std::floor((soundings[i].x - shape.west) / side);
    const double row = std::floor((shape.north - soundings[i].y) / side);
    if (column < 0 || row < 0 || column >= parts * shape.columns || row >= parts * shape.rows) continue;
    const auto width = std::uint64_t{parts} * static_cast<std::uint64_t>(shape.columns);
    placed.push_back({static_cast<std::uint64_t>(row) * width + static_cast<std::uint64_t>(column),
                      lineOf.empty() ? 0 : lineOf[i], static_cast<std::uint32_t>(i)});
  }
  std::sort(placed.begin(), placed.end());
  std::vector<ThinnedPoint> thinned;
  std::vector<float> depths;
  for (std::size_t i = 0; i < placed.size();) {
    const Placed first = placed[i];
    double x = 0, y = 0;
    depths.clear();
    for (; i < placed.size() && placed[i].quarter == first.quarter && placed[i].line == first.line; ++i) {
      const PlaneSounding& sounding = soundings[placed[i].sounding];
      x += sounding.x, y += sounding.y;
      depths.push_back(sounding.depth);
    }
    const auto count = static_cast<double>(depths.size());
    const auto middle = depths.begin() + static_cast<std::ptrdiff_t>((depths.size() - 1) / 2);
    std::nth_element(depths.begin(), middle, depths.end());
    thinned.push_back({{static_cast<float>((x / count - shape.west) / shape.cell - 0.5),
                        static_cast<float>((shape.north - y / count) / shape.cell - 0.5), *middle, 1.0F},
                       first.line});
  }
  return thinned;
}

}  // namespace sondrix
