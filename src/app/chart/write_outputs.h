#pragma once

namespace sondrix {

struct ChartRun;
class Progress;

// Makes the outputs of a run beside their names and puts them in place when all that can be made are whole;
// each has its account. EndAsked where a signal asked for it: then no earlier file was touched.
void WriteOutputs(ChartRun& run, Progress& progress);

// The report, behind all else.
void WriteReport(ChartRun& run);

}  // namespace sondrix
