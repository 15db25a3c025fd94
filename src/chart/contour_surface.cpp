#include "chart/contour_surface.h"

#include "chart/contour_places.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sondrix {

namespace {

// Each takes what is narrower than about two cells; more would round off what the soundings tell.
constexpr int SmoothingRounds = 3;

// Weights of 1, 2, 1 along a row. Where a neighbour is missing the value stays, so that a slope goes on
// straight to the edge of the chart.
void SmoothAlong(const float* from, std::size_t columns, float* to) {
  to[0] = from[0];
  for (std::size_t column = 1; column + 1 < columns; ++column) {
    const float mean = (from[column - 1] + 2 * from[column] + from[column + 1]) * 0.25F;
    to[column] = std::isnan(mean) ? from[column] : mean;
  }
  if (columns > 1) to[columns - 1] = from[columns - 1];
}

void SmoothRound(const DepthModel& model, std::vector<float>& depth) {
  const auto columns = static_cast<std::size_t>(model.shape.columns);
  const auto rows = static_cast<std::size_t>(model.shape.rows);
  std::vector<float> before(columns), here(columns), after(columns);
  SmoothAlong(depth.data(), columns, here.data());
  for (std::size_t row = 0; row < rows; ++row) {
    const bool hasBoth = row > 0 && row + 1 < rows;
    if (row + 1 < rows) SmoothAlong(depth.data() + (row + 1) * columns, columns, after.data());
    float* to = depth.data() + row * columns;
    const float* most = model.depth.data() + row * columns;
    const float* doubt = model.uncertainty.data() + row * columns;
    for (std::size_t column = 0; column < columns; ++column) {
      const float mean = hasBoth ? (before[column] + 2 * here[column] + after[column]) * 0.25F : here[column];
      float value = std::isnan(mean) ? here[column] : mean;
      const float least = most[column] - doubt[column];
      value = value < least ? least : value;
      to[column] = value > most[column] ? most[column] : value;
    }
    before.swap(here);
    here.swap(after);
  }
}

void FindSquares(ContourSurface& surface) {
  const GridShape& shape = surface.shape;
  const std::size_t stride = surface.SquareStride();
  std::vector<std::uint8_t>& squares = surface.squares;
  squares.assign(stride * (static_cast<std::size_t>(shape.rows) + 1), 0);
  for (int row = 1; row < shape.rows; ++row) {
    const float* south = surface.depth.data() + shape.IndexOf(0, row);
    const float* north = south - shape.columns;
    std::uint8_t* square = squares.data() + surface.SquareIndex(0, row);
    for (int column = 1; column < shape.columns; ++column) {
      square[column] = !std::isnan(north[column - 1] + north[column] + south[column - 1] + south[column]);
    }
  }
  // Where two squares meet at a corner only, the southern one goes. That can make another such corner at its
  // other end, which was passed, so the row of nodes is gone through until there is none.
  for (int row = 1; row < shape.rows; ++row) {
    for (bool again = true; again;) {
      again = false;
      for (int column = 0; column < shape.columns; ++column) {
        std::uint8_t* north = squares.data() + surface.SquareIndex(column, row);
        std::uint8_t* south = north + stride;
        if (north[0] == north[1] || north[0] != south[1] || north[1] != south[0]) continue;
        south[0] = south[1] = 0;
        again = true;
      }
    }
  }
}

void FindBands(ContourSurface& surface) {
  surface.band.assign(surface.depth.size(), 0);
  const std::vector<double>& depths = surface.depths;
  std::size_t band = 0;  // of the node before: the next one is seldom in another
  for (std::size_t node = 0; node < surface.depth.size(); ++node) {
    const double value = static_cast<double>(surface.depth[node]);
    if (std::isnan(value)) continue;
    while (band > 0 && value < depths[band - 1]) --band;
    while (band < depths.size() && value >= depths[band]) ++band;
    surface.band[node] = static_cast<std::uint16_t>(band);
  }
}

float LeastAround(const ContourSurface& surface, int column, int row) {
  const GridShape& shape = surface.shape;
  float least = std::numeric_limits<float>::infinity();
  for (int y = std::max(row - 1, 0); y <= std::min(row + 1, shape.rows - 1); ++y) {
    for (int x = std::max(column - 1, 0); x <= std::min(column + 1, shape.columns - 1); ++x) {
      const float value = surface.depth[shape.IndexOf(x, y)];
      if (value < least) least = value;
    }
  }
  return least;
}

// A node that is hardly deeper than a contour is made shallower than it, so that the contour keeps its margin
// from the deep end of each edge. The margin at the shallow end comes from moving the crossing to the deep.
void KeepOffNodes(ContourSurface& surface) {
  const GridShape& shape = surface.shape;
  const double margin = CrossingMargin(shape.cell);
  float least = std::numeric_limits<float>::infinity(), most = -least;
  for (const float value : surface.depth) {
    least = value < least ? value : least;
    most = value > most ? value : most;
  }
  const double widest = margin * (static_cast<double>(most) - static_cast<double>(least));
  // A node made shallower can widen its neighbour's edge. Each change takes a band from a node, so that this
  // ends; two or three rounds are usual.
  for (bool again = true; again;) {
    again = false;
    for (int row = 0; row < shape.rows; ++row) {
      for (int column = 0; column < shape.columns; ++column) {
        const std::size_t node = shape.IndexOf(column, row);
        if (surface.band[node] == 0) continue;
        const double contour = surface.depths[surface.band[node] - 1U];
        const double value = static_cast<double>(surface.depth[node]);
        if (value - contour > widest) continue;
        const double around = static_cast<double>(LeastAround(surface, column, row));
        if (around >= contour || value - contour > margin * (value - around)) continue;
        surface.SetDepth(node, JustAbove(contour));
        again = true;
      }
    }
  }
}

}  // namespace

void ContourSurface::SetDepth(std::size_t node, float value) {
  depth[node] = value;
  while (band[node] > 0 && static_cast<double>(value) < depths[band[node] - 1U]) --band[node];
  while (band[node] < depths.size() && static_cast<double>(value) >= depths[band[node]]) ++band[node];
}

double CrossingMargin(double cell) {
  constexpr double part = 0.01, least = 0.005, most = 0.1;
  return std::clamp(least / cell, part, most);
}

float JustAbove(double depth) {
  const float nearest = static_cast<float>(depth);
  return static_cast<double>(nearest) < depth
             ? nearest
             : std::nextafter(nearest, -std::numeric_limits<float>::infinity());
}

ContourSurface ContourSurfaceOf(const DepthModel& model, std::span<const double> depths) {
  ContourSurface surface;
  surface.shape = model.shape;
  surface.depths.assign(depths.begin(), depths.end());
  surface.depth = model.depth;
  if (surface.depth.empty()) return surface;
  for (int round = 0; round < SmoothingRounds; ++round) SmoothRound(model, surface.depth);
  FindSquares(surface);
  FindBands(surface);
  WidenSmallShoals(surface);
  KeepOffNodes(surface);
  FillSmallHollows(model, surface);
  return surface;
}

}  // namespace sondrix
