#pragma once

#include "core/run_result.h"

namespace sondrix {

struct Run;

// The job for tables of soundings: exports with a sonar channel in each row, and rows of latitude, longitude
// and depth. Thins Settings.Source to the points of a chart and writes them under the target's name as
// ".txt", ".plt" and ".mp", and the rows that it couldn't use as "_bad.txt". Reports in the log line; a fault
// ends it with no file written.
RunResult JobCsv(Run& run);

}  // namespace sondrix
