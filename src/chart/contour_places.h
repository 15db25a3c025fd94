#pragma once

#include "chart/contour_surface.h"

namespace sondrix {

// Small places with a ring of their own; those at the edge of the chart have none and stay as they are.

// A shoal of a few cells is made shallower within its own band, until its ring is about a cell wide.
void WidenSmallShoals(ContourSurface& surface);

// What is deeper than a contour within fewer than a dozen cells is made just shallower than it. A dozen cells
// are a disc four cells across: the smoothing leaves nothing of the form of a narrower one.
void FillSmallHollows(ContourSurface& surface);

}  // namespace sondrix
