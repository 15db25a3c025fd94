#include "exports/cut_lines.h"

#include "exports/shore_file.h"

#include <algorithm>
#include <utility>

namespace sondrix {
namespace {

// A side of a box: where along is at least limit, or with the other sign at most.
struct Side {
  double PlanePoint::*along;
  double sign, limit;

  double Inside(const PlanePoint& point) const { return sign * (point.*along - limit); }
};

PlaneLine CutAt(const PlaneLine& ring, const Side& side) {
  PlaneLine cut;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const PlanePoint &from = ring[i], &to = ring[i + 1];
    const double begin = side.Inside(from), end = side.Inside(to);
    if (begin >= 0) cut.push_back(from);
    if ((begin < 0) == (end < 0)) continue;
    const double part = begin / (begin - end);
    PlanePoint crossing = {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
    crossing.*side.along = side.limit;
    cut.push_back(crossing);
  }
  if (!cut.empty()) cut.push_back(cut.front());
  return cut;
}

}  // namespace

// Sutherland and Hodgman (1974), one side after the other.
PlaneLine CutRing(const PlaneLine& ring, const PlaneBox& box) {
  const Side sides[] = {{&PlanePoint::x, 1, box.west},
                        {&PlanePoint::x, -1, box.east},
                        {&PlanePoint::y, 1, box.south},
                        {&PlanePoint::y, -1, box.north}};
  PlaneLine cut = ring;
  for (const Side& side : sides) cut = CutAt(cut, side);
  constexpr std::size_t fewest = 4;  // of a triangle
  if (cut.size() < fewest) cut.clear();
  return cut;
}

std::vector<PlaneLine> CutLine(const PlaneLine& line, const PlaneBox& box) {
  std::vector<PlaneLine> pieces;
  bool goesOn = false;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const auto [west, east] = std::minmax(line[i].x, line[i + 1].x);
    const auto [south, north] = std::minmax(line[i].y, line[i + 1].y);
    const bool touches = west <= box.east && east >= box.west && south <= box.north && north >= box.south;
    if (touches && !goesOn) pieces.push_back({line[i]});
    if (touches) pieces.back().push_back(line[i + 1]);
    goesOn = touches;
  }
  return pieces;
}

}  // namespace sondrix
