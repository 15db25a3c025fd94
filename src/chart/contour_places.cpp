#include "chart/contour_places.h"

#include <algorithm>
#include <array>

namespace sondrix {

namespace {

struct Node {
  int column = 0, row = 0;
  bool operator==(const Node&) const = default;
};

constexpr std::size_t MostHollow = 11, LeastHollow = 1, MostShoal = 3;  // cells

// Part of the chart's cells, and number of cells, that may go beyond twice their uncertainty. Soundings lie
// in a part of the cells only, so that more of them can.
constexpr double MostBeyond = 0.0025;
constexpr std::size_t LeastBeyond = 24;

// The nodes of one place, from the first of them on.
struct Place {
  std::array<Node, MostHollow> nodes;
  std::size_t count = 0;
};

// The four to the sides stand first.
constexpr std::array<Node, 8> Around = {
    {{0, -1}, {-1, 0}, {1, 0}, {0, 1}, {-1, -1}, {1, -1}, {-1, 1}, {1, 1}}};

enum class Kind { Hollow, Shoal };

// As contours are traced, shallow nodes hang together across a corner and deep ones don't.
std::size_t LinksOf(Kind kind) { return kind == Kind::Hollow ? 4 : 8; }

bool IsOf(Kind kind, const ContourSurface& surface, Node node, int level) {
  const int band = surface.band[surface.shape.IndexOf(node.column, node.row)];
  return kind == Kind::Hollow ? band >= level : band < level;
}

// All that hangs together with the first node on its side of the contour; false where that is more than
// `most` or comes to the edge of the chart.
bool Gather(const ContourSurface& surface, Kind kind, Node first, int level, std::size_t most, Place& place) {
  place.count = 1;
  place.nodes[0] = first;
  for (std::size_t done = 0; done < place.count; ++done) {
    const Node node = place.nodes[done];
    if (!surface.IsInside(node.column, node.row)) return false;
    for (std::size_t link = 0; link < LinksOf(kind); ++link) {
      const Node next = {node.column + Around[link].column, node.row + Around[link].row};
      if (!IsOf(kind, surface, next, level)) continue;
      const auto end = place.nodes.begin() + static_cast<std::ptrdiff_t>(place.count);
      if (std::find(place.nodes.begin(), end, next) != end) continue;
      if (place.count == most) return false;
      place.nodes[place.count++] = next;
    }
  }
  return true;
}

// So shallow that the contour lies halfway to the deep nodes beside, but within the upper half of the band.
float WideDepth(const ContourSurface& surface, Node node, int level) {
  const double contour = surface.depths[static_cast<std::size_t>(level) - 1];
  double sum = 0;
  int count = 0;
  for (std::size_t side = 0; side < 4; ++side) {
    const Node next = {node.column + Around[side].column, node.row + Around[side].row};
    if (IsOf(Kind::Shoal, surface, next, level)) continue;
    sum += static_cast<double>(surface.depth[surface.shape.IndexOf(next.column, next.row)]);
    ++count;
  }
  const std::size_t index = surface.shape.IndexOf(node.column, node.row);
  const float depth = surface.depth[index];
  if (count == 0) return depth;
  const std::size_t band = surface.band[index];
  const double upper = band > 0 ? surface.depths[band - 1] : std::min(0.0, surface.depths[0]);
  const double middle = (upper + surface.depths[band]) / 2;
  return std::min(depth, static_cast<float>(std::max(2 * contour - sum / count, middle)));
}

// The nodes that are deeper than the contour by more than twice their uncertainty.
std::size_t CountBeyond(const DepthModel& model, const Place& place, double contour) {
  const auto isBeyond = [&](Node node) {
    const std::size_t index = model.shape.IndexOf(node.column, node.row);
    return static_cast<double>(model.depth[index]) >
           contour + 2 * static_cast<double>(model.uncertainty[index]);
  };
  return static_cast<std::size_t>(std::count_if(
      place.nodes.begin(), place.nodes.begin() + static_cast<std::ptrdiff_t>(place.count), isBeyond));
}

// Hollows of up to that many cells, and those up to the largest that no cell minds. How many cells mind;
// those in one hollow within another count for each, where they aren't filled.
std::size_t HollowsUpTo(std::size_t size, const DepthModel& model, ContourSurface& surface, bool isToFill) {
  std::size_t beyond = 0;
  Place place;
  const int stride = surface.shape.columns;
  for (int row = 1; row + 1 < surface.shape.rows; ++row) {
    for (int column = 1; column + 1 < surface.shape.columns; ++column) {
      // The first node of a hollow, in the order of the rows, has shallower ones to the north and to the
      // west.
      const std::uint16_t* band = surface.band.data() + surface.shape.IndexOf(column, row);
      const int last = *band;
      for (int level = std::max(band[-1], band[-stride]) + 1; level <= last; ++level) {
        if (!Gather(surface, Kind::Hollow, {column, row}, level, MostHollow, place)) continue;
        const double contour = surface.depths[static_cast<std::size_t>(level) - 1];
        const std::size_t count = CountBeyond(model, place, contour);
        if (count > 0 && place.count > size) continue;
        beyond += count;
        for (std::size_t i = 0; isToFill && i < place.count; ++i) {
          surface.SetDepth(surface.shape.IndexOf(place.nodes[i].column, place.nodes[i].row),
                           JustAbove(contour));
        }
        break;
      }
    }
  }
  return beyond;
}

}  // namespace

void WidenSmallShoals(ContourSurface& surface) {
  Place place;
  const int stride = surface.shape.columns;
  for (int row = 1; row + 1 < surface.shape.rows; ++row) {
    for (int column = 1; column + 1 < surface.shape.columns; ++column) {
      // The first node of a shoal, in the order of the rows, has deep ones to the north and to the west.
      const std::uint16_t* band = surface.band.data() + surface.shape.IndexOf(column, row);
      const int highest =
          std::min(std::min(band[-1], band[-stride]), std::min(band[-stride - 1], band[1 - stride]));
      for (int level = highest; level > *band; --level) {
        if (!Gather(surface, Kind::Shoal, {column, row}, level, MostShoal, place)) continue;
        for (std::size_t i = 0; i < place.count; ++i) {
          const Node node = place.nodes[i];
          surface.SetDepth(surface.shape.IndexOf(node.column, node.row), WideDepth(surface, node, level));
        }
        break;
      }
    }
  }
}

void FillSmallHollows(const DepthModel& model, ContourSurface& surface) {
  const auto cells = static_cast<double>(std::count(surface.squares.begin(), surface.squares.end(), 1));
  const std::size_t most = std::max(LeastBeyond, static_cast<std::size_t>(MostBeyond * cells));
  std::size_t size = MostHollow;
  while (size > LeastHollow && HollowsUpTo(size, model, surface, false) > most) size -= 2;
  HollowsUpTo(size, model, surface, true);
}

}  // namespace sondrix
