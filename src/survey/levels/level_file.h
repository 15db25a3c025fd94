#pragma once

#include "survey/levels/level_series.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What may be told of a gauge's file; what isn't told is found in it.
struct LevelFileOptions {
  std::function<double(double seconds)> toUtc;  // of times without a zone; none: UTC
  std::string zoneName;                         // of toUtc, for the line that says what was assumed
  std::optional<double> metresOfUnit;           // none: by the head, or metres
};

struct LevelFile {
  std::string kind;  // "gauge table (USA)" and the like, for the line
  LevelSeries series;
  std::uint64_t readings = 0;          // used
  std::uint64_t missing = 0, bad = 0;  // rows marked as without a value; rows that can't be understood
  std::vector<std::string> takenFor;   // what column, unit and zone were taken for, a sentence each
  std::vector<std::string> remarks;    // gaps, hours that stand twice, values left out: a sentence each
};

// A gauge's readings from the whole text of a file, whatever its form: the tab-separated text of the United
// States' gauges, CSV and JSON of the German waterways' gauges, CSV and JSON of the American tide stations,
// any table of time and value. CantRead (sounders/common/reading.h) with a reason where it holds no levels.
LevelFile ReadLevels(std::string_view text, const LevelFileOptions& options);

}  // namespace sondrix
