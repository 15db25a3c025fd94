#include "chart/track_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace sondrix {
namespace {

constexpr double MostTiles = 4e6;
constexpr std::size_t Samples = 20'000;
// Lines run side by side where their courses differ by less than 30 degrees.
constexpr double SideBySide = 0.866;
// Fewer gaps than that tell nothing.
constexpr std::size_t FewestGaps = 20;

// Which line last crossed a tile, and where to.
struct Tile {
  std::uint32_t line = 0;  // its number and 1; 0: none
  float east = 0, north = 0;
  std::uint32_t sounding = 0;
};

// The soundings by tiles of the plane.
class Tiles {
 public:
  Tiles(std::span<const PlaneSounding> soundings, double step) {
    double east = soundings[0].x, south = soundings[0].y;
    west_ = east, north_ = south;
    for (const PlaneSounding& one : soundings) {
      west_ = std::min(west_, one.x), east = std::max(east, one.x);
      south = std::min(south, one.y), north_ = std::max(north_, one.y);
    }
    const double width = east - west_, height = north_ - south;
    area_ = width * height;
    side_ = std::max({2 * step, std::sqrt(area_ / MostTiles), std::max(width, height) / MostTiles, 1e-3});
    columns_ = static_cast<std::ptrdiff_t>(width / side_) + 1;
    rows_ = static_cast<std::ptrdiff_t>(height / side_) + 1;
    tiles_.resize(static_cast<std::size_t>(columns_ * rows_));
  }
  double Side() const { return side_; }
  double Reach() const { return static_cast<double>(std::max(columns_, rows_)) * side_; }
  Tile* At(double x, double y) {
    const auto column = static_cast<std::ptrdiff_t>(std::floor((x - west_) / side_));
    const auto row = static_cast<std::ptrdiff_t>(std::floor((north_ - y) / side_));
    if (column < 0 || row < 0 || column >= columns_ || row >= rows_) return nullptr;
    return &tiles_[static_cast<std::size_t>(row * columns_ + column)];
  }
  // Of the tiles with soundings, and of those around them.
  double Covered() const {
    std::size_t covered = 0;
    for (const Tile& tile : tiles_) covered += tile.line != 0;
    return static_cast<double>(covered) * side_ * side_;
  }

 private:
  double west_ = 0, north_ = 0, side_ = 1, area_ = 0;
  std::ptrdiff_t columns_ = 0, rows_ = 0;
  std::vector<Tile> tiles_;
};

constexpr double LeastApart = 0.1;  // metres; no position is better known

double MedianOf(std::vector<double> gaps) {
  const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
  std::nth_element(gaps.begin(), middle, gaps.end());
  return *middle;
}

}  // namespace

double LineSpacing(std::span<const PlaneSounding> soundings, const TrackLines& lines) {
  if (soundings.empty()) return 0;
  Tiles tiles(soundings, lines.step);
  // The course at a sounding, from a few before it to a few behind.
  const auto courseAt = [&](std::size_t i) -> std::pair<double, double> {
    constexpr std::size_t reach = 4;
    std::size_t a = i, b = i;
    while (a > 0 && i - a < reach && lines.lineOf[a - 1] == lines.lineOf[i]) --a;
    while (b + 1 < soundings.size() && b - i < reach && lines.lineOf[b + 1] == lines.lineOf[i]) ++b;
    const double x = soundings[b].x - soundings[a].x, y = soundings[b].y - soundings[a].y;
    const double length = std::hypot(x, y);
    return length > 0 ? std::pair(x / length, y / length) : std::pair(0.0, 0.0);
  };
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const auto [east, north] = courseAt(i);
    Tile& tile = *tiles.At(soundings[i].x, soundings[i].y);
    tile = {lines.lineOf[i] + 1, static_cast<float>(east), static_cast<float>(north),
            static_cast<std::uint32_t>(i)};
  }
  std::vector<double> gaps;
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / Samples);
  for (std::size_t i = 0; i < soundings.size(); i += stride) {
    const auto [east, north] = courseAt(i);
    if (east == 0 && north == 0) continue;
    for (const double side : {1.0, -1.0}) {
      // A line that was run twice is one.
      for (double way = 1.5 * tiles.Side(); way < tiles.Reach(); way += tiles.Side() / 2) {
        const Tile* const tile =
            tiles.At(soundings[i].x + side * way * north, soundings[i].y - side * way * east);
        if (tile == nullptr) break;
        if (tile->line == 0 || tile->line == lines.lineOf[i] + 1) continue;
        if (std::abs(tile->east * east + tile->north * north) < SideBySide) continue;
        const PlaneSounding& other = soundings[tile->sounding];
        gaps.push_back(std::abs((other.x - soundings[i].x) * north - (other.y - soundings[i].y) * east));
        break;
      }
    }
  }
  if (gaps.size() >= FewestGaps) return MedianOf(std::move(gaps));
  // Soundings that all but lie at one place have none.
  const double apart = std::sqrt(tiles.Covered() / static_cast<double>(soundings.size())) * 2;
  return apart < LeastApart ? 0 : apart;
}

}  // namespace sondrix
