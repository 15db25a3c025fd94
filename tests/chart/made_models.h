#pragma once

#include "chart/grid.h"

#include <cmath>
#include <limits>
#include <random>

namespace sondrix {

// A bed of waves with noise of a centimetre or so, walls that fall by many metres from cell to cell, holes in
// the chart of any form, and some depths that are exactly those of contours.
struct RoughBed {
  unsigned seed = 1;
  int columns = 20, rows = 20;
  double noise = 0.05, holes = 0.05, wall = 0;  // metres, part of the cells, metres
};

inline DepthModel ModelOf(const RoughBed& bed) {
  DepthModel model = {{500000, 5800000, 2, bed.columns, bed.rows}, {}, {}};
  std::mt19937 random(bed.seed);
  std::uniform_real_distribution<double> any(0, 1);
  const double phase = 6 * any(random), turn = any(random);
  for (int row = 0; row < bed.rows; ++row) {
    for (int column = 0; column < bed.columns; ++column) {
      double depth = 4 + 2 * std::sin(column * 0.31 + phase) * std::cos(row * 0.27 + phase) +
                     bed.noise * 2 * (any(random) - 0.5);
      if (column * turn + row * (1 - turn) > bed.columns / 2.0) depth += bed.wall;
      if (any(random) < 0.05) depth = std::round(depth);
      const bool isHole = any(random) < bed.holes;
      model.depth.push_back(isHole ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(depth));
      model.uncertainty.push_back(isHole ? std::numeric_limits<float>::quiet_NaN() : 0.1F);
    }
  }
  return model;
}

}  // namespace sondrix
