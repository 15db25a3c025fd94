#include "chart/shore_mask.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace sondrix {
namespace {

using Area = std::vector<PlaneLine>;

constexpr double NearShore = 1'000;  // metres

bool IsClosed(const PlaneLine& line) {
  return line.size() > 3 && line.front().x == line.back().x && line.front().y == line.back().y;
}

bool IsWithin(const Area& area, double x, double y) {
  bool within = false;
  for (const PlaneLine& ring : area) {
    for (std::size_t i = 1; i < ring.size(); ++i) {
      const PlanePoint &a = ring[i - 1], &b = ring[i];
      if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) within = !within;
    }
  }
  return within;
}

ShoreLines::Box BoxOf(const Area& area) {
  ShoreLines::Box box;
  for (const PlaneLine& ring : area) {
    for (const PlanePoint& point : ring) box.Add(point);
  }
  return box;
}

// Where the rings of an area cross the middles of rows first to last, rising in each row; columns.
std::vector<std::vector<double>> CrossingsOf(const Area& area, const GridShape& shape, int first, int last) {
  std::vector<std::vector<double>> crossings(static_cast<std::size_t>(last - first + 1));
  const auto rowAt = [&](double y) { return (shape.north - y) / shape.cell - 0.5; };
  for (const PlaneLine& ring : area) {
    for (std::size_t i = 1; i < ring.size(); ++i) {
      const PlanePoint &a = ring[i - 1], &b = ring[i];
      const double from = std::floor(rowAt(std::max(a.y, b.y))), to = std::ceil(rowAt(std::min(a.y, b.y)));
      const int end = static_cast<int>(std::min<double>(last, to));
      for (int row = static_cast<int>(std::max<double>(first, from)); row <= end; ++row) {
        const double y = shape.MiddleOf(0, row).y;
        if ((a.y > y) == (b.y > y)) continue;
        const double x = a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x);
        crossings[static_cast<std::size_t>(row - first)].push_back((x - shape.west) / shape.cell - 0.5);
      }
    }
  }
  for (std::vector<double>& row : crossings) std::sort(row.begin(), row.end());
  return crossings;
}

// Calls mark for the cells of an area's inside, row by row.
template <typename Mark>
void FillArea(const Area& area, const GridShape& shape, Mark mark) {
  const ShoreLines::Box box = BoxOf(area);
  const auto rowAt = [&](double y) {
    return static_cast<int>(std::clamp((shape.north - y) / shape.cell, -1.0, shape.rows + 1.0));
  };
  const int first = std::max(0, rowAt(box.north) - 1), last = std::min(shape.rows - 1, rowAt(box.south) + 1);
  if (first > last) return;
  const std::vector<std::vector<double>> rows = CrossingsOf(area, shape, first, last);
  for (int row = first; row <= last; ++row) {
    const std::vector<double>& crossings = rows[static_cast<std::size_t>(row - first)];
    for (std::size_t i = 1; i < crossings.size(); i += 2) {
      const auto columnAt = [&](double at) {
        return static_cast<int>(std::clamp(std::ceil(at), 0.0, static_cast<double>(shape.columns)));
      };
      const int end = columnAt(crossings[i]);
      for (int column = columnAt(crossings[i - 1]); column < end; ++column) mark(shape.IndexOf(column, row));
    }
  }
}

// Calls take for places along a line, no further than distance from each other.
template <typename Take>
void WalkLine(const PlaneLine& line, double distance, Take take) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    const PlanePoint &a = line[i - 1], &b = line[i];
    const int steps = static_cast<int>(std::hypot(b.x - a.x, b.y - a.y) / distance) + 1;
    for (int s = 0; s < steps; ++s) {
      const double share = static_cast<double>(s) / steps;
      take(PlanePoint{a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)});
    }
  }
  if (!line.empty()) take(line.back());
}

// The cell of a place; columns * rows where it lies out of the grid.
std::size_t CellOf(const GridShape& shape, const PlanePoint& at) {
  const double column = std::floor((at.x - shape.west) / shape.cell);
  const double row = std::floor((shape.north - at.y) / shape.cell);
  if (column < 0 || row < 0 || column >= shape.columns || row >= shape.rows) return shape.CellCount();
  return shape.IndexOf(static_cast<int>(column), static_cast<int>(row));
}

}  // namespace

void ShoreLines::Box::Join(const Box& other) {
  if (other.isEmpty) return;
  Add({other.west, other.south});
  Add({other.east, other.north});
}

void ShoreLines::Box::Add(const PlanePoint& point) {
  if (isEmpty) *this = {point.x, point.y, point.x, point.y, false};
  west = std::min(west, point.x), east = std::max(east, point.x);
  south = std::min(south, point.y), north = std::max(north, point.y);
}

ShoreLines::ShoreLines(const Shore& shore, std::span<const PlaneSounding> soundings) : areas_(shore.areas) {
  Area rings;
  for (const PlaneLine& line : shore.lines) {
    if (IsClosed(line)) {
      rings.push_back(line);
    } else if (line.size() > 1) {
      open_.push_back(line);
    }
  }
  if (!rings.empty()) areas_.push_back(std::move(rings));
  if (areas_.empty() && open_.empty()) throw CantModel("the shore has neither lines nor areas");

  Box land, water;
  for (const Area& area : areas_) land.Join(BoxOf(area));
  for (const PlaneLine& line : open_) land.Join(BoxOf({line}));
  for (const PlaneSounding& one : soundings) water.Add({one.x, one.y});
  // What lies a whole chart away from it is the shore of another water.
  const double reach = std::max(water.east - water.west, water.north - water.south) + NearShore;
  if (land.west > water.east + reach || land.east < water.west - reach || land.south > water.north + reach ||
      land.north < water.south - reach) {
    throw CantModel("the shore lies nowhere near the soundings");
  }

  // A sample tells on which side of the shore the water is.
  constexpr std::size_t enough = 2'000;
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / enough);
  std::vector<std::size_t> within(areas_.size());
  std::size_t inside = 0, sample = 0;
  for (std::size_t i = 0; i < soundings.size(); i += stride, ++sample) {
    bool isInside = false;
    for (std::size_t a = 0; a < areas_.size(); ++a) {
      if (!IsWithin(areas_[a], soundings[i].x, soundings[i].y)) continue;
      isInside = true;
      ++within[a];
    }
    inside += isInside;
  }
  areasAreWater_ = 2 * inside > sample;
  for (std::size_t a = 0; areasAreWater_ && a < areas_.size(); ++a) {
    if (within[a] == 0) continue;
    water_.Join(BoxOf(areas_[a]));
  }
}

std::vector<std::uint8_t> ShoreLines::WaterCells(const GridShape& shape,
                                                 std::span<const std::uint8_t> sounded) const {
  std::vector<std::uint8_t> water(shape.CellCount(), areasAreWater_ ? 0 : 1);
  for (const Area& area : areas_) {
    FillArea(area, shape, [&](std::size_t cell) { water[cell] = areasAreWater_ ? 1 : 0; });
  }
  // Open lines are walls; water is what can be come to from a sounding.
  constexpr std::uint8_t wall = 2, seen = 3;
  for (const PlaneLine& line : open_) {
    WalkLine(line, shape.cell / 4, [&](const PlanePoint& at) {
      const std::size_t cell = CellOf(shape, at);
      if (cell < water.size() && water[cell] == 1) water[cell] = wall;
    });
  }
  std::vector<std::size_t> front;
  for (std::size_t k = 0; k < water.size(); ++k) {
    if (sounded[k] != 0 && water[k] == 1) water[k] = seen, front.push_back(k);
  }
  const auto columns = static_cast<std::size_t>(shape.columns);
  while (!front.empty()) {
    const std::size_t k = front.back();
    front.pop_back();
    const auto visit = [&](std::size_t next) {
      if (water[next] == 1) {
        water[next] = seen;
        front.push_back(next);
      } else if (water[next] == wall) {
        water[next] = 4;  // the wall's own cells are half water
      }
    };
    if (k % columns > 0) visit(k - 1);
    if (k % columns + 1 < columns) visit(k + 1);
    if (k >= columns) visit(k - columns);
    if (k + columns < water.size()) visit(k + columns);
  }
  for (std::uint8_t& cell : water) cell = cell >= seen ? 1 : 0;
  return water;
}

std::vector<PlanePoint> ShoreLines::Places(const GridShape& shape, double distance) const {
  std::vector<PlanePoint> places;
  const auto take = [&](const PlanePoint& at) {
    if (CellOf(shape, at) < shape.CellCount()) places.push_back(at);
  };
  for (const Area& area : areas_) {
    for (const PlaneLine& ring : area) WalkLine(ring, distance, take);
  }
  for (const PlaneLine& line : open_) WalkLine(line, distance, take);
  return places;
}

}  // namespace sondrix
