#pragma once

#include "chart/grid.h"

#include <vector>

namespace sondrix {

using PlaneLine = std::vector<PlanePoint>;

// The shore as a vector file has it, in the chart's projection.
struct Shore {
  // Areas: an outer ring and its holes, the first point of a ring repeated at its end. Whether they are water
  // or land is found out from the soundings.
  std::vector<std::vector<PlaneLine>> areas;
  std::vector<PlaneLine> lines;

  bool IsEmpty() const { return areas.empty() && lines.empty(); }
};

}  // namespace sondrix
