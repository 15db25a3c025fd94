#pragma once

#include "app/chart/read_sources.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct ChartRun;

// Takes the readings into the accounts of the sources and, as trips, into the survey, in the order of the
// sources; trips that repeat others are left out. Of the same name they get so much of their folders before
// it that they differ, or a number.
void Assemble(std::span<const ChartSource> sources, std::vector<SourceReading>& readings, ChartRun& run);

// For lines and outputs: UTF-8 without control characters.
std::string ShownName(std::string_view name);

}  // namespace sondrix
