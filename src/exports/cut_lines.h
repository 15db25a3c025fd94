#pragma once

#include "chart/shore.h"

#include <vector>

namespace sondrix {

struct PlaneBox;

// The ring (its first point repeated at the end) cut to the box, along whose edges it may go on; empty where
// nothing is left.
PlaneLine CutRing(const PlaneLine& ring, const PlaneBox& box);

// The pieces of a line that may touch the box, uncut segments.
std::vector<PlaneLine> CutLine(const PlaneLine& line, const PlaneBox& box);

}  // namespace sondrix
