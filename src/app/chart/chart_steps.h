#pragma once

namespace sondrix {

struct ChartRun;
class Progress;

// Whether some output needs a depth model.
bool NeedsModel(const ChartRun& run);

// What is done between the survey and the outputs: what lies far from the rest is found, the projection is
// settled where an output needs one, and so is the depth model with its contours. Why there is none stands in
// the run's chart. EndAsked where a signal asked for it.
void DrawChart(ChartRun& run, Progress& progress);

}  // namespace sondrix
