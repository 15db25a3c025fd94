#pragma once

#include "chart/contour_trace.h"
#include "chart/contours.h"

#include <span>
#include <vector>

namespace sondrix {

// The areas between the contours: their pieces and those of the chart's edge joined to rings, and holes given
// to the ring around them. They cover the chart, but for what is shallower than a first depth of 0 or less:
// land. `deepest`, metres, is the end of the last band.
std::vector<DepthArea> DepthAreasOf(const ContourSurface& surface, const ContourTrace& trace,
                                    std::span<const ContourPath> paths, double deepest);

}  // namespace sondrix
