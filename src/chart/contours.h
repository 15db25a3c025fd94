#pragma once

#include "chart/grid.h"
#include "chart/shore.h"

#include <functional>
#include <span>
#include <vector>

namespace sondrix {

// All points of one depth that hang together. Deeper water lies on its left.
struct ContourLine {
  double depth = 0;      // metres
  bool isIndex = false;  // to be drawn heavier: each fifth
  bool isClosed = false;
  PlaneLine points;  // of a closed one the first is repeated at the end
};

// Water between two contours; a polygon with holes, valid after the rules of simple features.
struct DepthArea {
  double depthMin = 0, depthMax = 0;  // metres; 0 before the first contour, the deepest cell behind the last
  std::vector<PlaneLine> rings;       // the outer one counterclockwise, then the holes clockwise, all closed
};

struct Contours {
  std::vector<ContourLine> lines;  // by depth
  std::vector<DepthArea> areas;    // by depth
};

// Which depths to draw, metres.
struct ContourDepths {
  double step = 0;           // multiples of it above 0; 0: a round one, so that there are about ten
  std::vector<double> list;  // goes before the step; rising
  double unit = 1;           // metres: in what a round step is round
};
inline constexpr std::size_t MostContourDepths = 2000;

// Rising, at most MostContourDepths: of a list that long its first, of a step too fine for the model a
// multiple. Whether it is too fine can be asked before.
std::vector<double> DepthsToDraw(const ContourDepths& wanted, const DepthModel& model);
bool IsStepTooFine(double step, const DepthModel& model);

// Contours and the areas between them, both of one surface that is nowhere deeper than the model: all along a
// contour, bilinear interpolation of the model gives at least its depth. They go no further than the middles
// of the outermost cells. Depths are rising; those of 0 or less are the shore, with no area before them.
// isToEnd is asked now and then; then EndAsked is thrown.
Contours ContoursOf(const DepthModel& model, std::span<const double> depths,
                    const std::function<bool()>& isToEnd);

}  // namespace sondrix
