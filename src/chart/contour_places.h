#pragma once

#include "chart/contour_surface.h"

namespace sondrix {

// Small places with a ring of their own; those at the edge of the chart have none and stay as they are.

// A shoal of a few cells is made shallower within its own band, until its ring is about a cell wide.
void WidenSmallShoals(ContourSurface& surface);

// What is deeper than a contour within fewer than a dozen cells is made just shallower than it. A dozen cells
// are a disc four cells across: the smoothing leaves nothing of the form of a narrower one.
//
// On a rough bed that would take many soundings out of the area of their depth. So where too many cells would
// be deeper than their contour by more than twice their uncertainty, only the smaller ones of such hollows
// go, those of a single cell at least.
void FillSmallHollows(const DepthModel& model, ContourSurface& surface);

}  // namespace sondrix
