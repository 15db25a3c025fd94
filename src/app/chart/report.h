#pragma once

#include <string>

namespace sondrix {

struct ChartRun;

// The report of a call as JSON, ended by LF; of nothing but the call, its sources and what came of them.
std::string ReportText(const ChartRun& run);

}  // namespace sondrix
