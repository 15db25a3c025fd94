#pragma once

#include "sounders/common/reading.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct ChartRun;

// A line of what there is to say of a call, for standard output or as a complaint.
struct ChartLine {
  std::string text;
  bool isComplaint = false;
};

// One for each source in their order, one for the fates in total, some for the chart, one for each file made
// or not made.
std::vector<ChartLine> ChartLines(const ChartRun& run);

// "1 sounding", "2 soundings".
std::string CountedThings(std::uint64_t count, std::string_view thing);

// "3 bad rows, 1 cut at the end"; empty where nothing was passed over.
std::string CountsText(const PassedOverCounts& counts);

// "2021-05-15 07:29:00", UTC, from seconds since 1970.
std::string TimeText(double seconds);

}  // namespace sondrix
