#pragma once

#include "chart/spline_energy.h"

#include <functional>
#include <span>
#include <vector>

namespace sondrix {

// How a surface follows its points; lengths in nodes.
struct SplineShape {
  // Waves shorter than that along the tracks are smoothed away.
  double smoothing = 0.4;
  // Beyond that the surface hangs like a skin, within it bends like a plate; 0: a skin throughout, infinite:
  // a plate.
  double tensionLength = 0;
};

// The spline of points on a grid of columns by rows nodes, solved from the coarsest grid to the finest, each
// beginning where the coarser one ended (cascadic multigrid: Bornemann and Deuflhard, 1996, Numerische
// Mathematik 75, 135-152). domain: 1 or 0 for each node. A value for each node, also out of the domain, where
// it means nothing. The points may be in any order; they must lie between nodes. EndAsked.
std::vector<float> SplineSurface(int columns, int rows, std::span<const float> domain,
                                 std::vector<GridPoint> points, const SplineShape& shape, int threads,
                                 const std::function<bool()>& isToEnd = {});

}  // namespace sondrix
