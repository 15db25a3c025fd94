#pragma once

#include "chart/depth_model.h"
#include "chart/spline_energy.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// What stands for the soundings of a part of a cell.
struct ThinnedPoint {
  GridPoint at;
  std::uint32_t line = 0;
};

// The median depth of the soundings in each quarter of a cell, where they are on average, so that a long stay
// at one place counts no more than a pass. Those of different lines are kept apart; lineOf has one for each
// sounding, or is empty for one line. By quarter from the north-west, then by line. Soundings out of the grid
// are left out.
std::vector<ThinnedPoint> ThinSoundings(std::span<const PlaneSounding> soundings,
                                        std::span<const std::uint32_t> lineOf, const GridShape& shape);

}  // namespace sondrix
