#pragma once

#include "core/run_result.h"
#include "sonar/source_summary.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sondrix {

enum class TextKind { Export, ThreeColumns, Log, Map };

// What a table, a log or a map holds, by the lines that were looked at.
struct TextSummary {
  std::int64_t bytes = 0;
  bool isWhole = false;
  TextKind kind = TextKind::Export;
  std::int64_t lines = 0;              // an estimate where it isn't whole
  std::vector<ChannelCount> channels;  // of an export: rows of each, of those that were looked at
  std::int64_t soundings = 0;          // rows of three columns, depths of a log, labels of a map
  std::optional<double> leastDepth, greatestDepth;  // metres
};

// By the extension, as a run would take it. Takes about as long as it is given, however long the file. Faults
// as of a source that can't be opened or read.
TextSummary LookAtText(std::string_view path, std::chrono::milliseconds time = LookTime);

}  // namespace sondrix
