#pragma once

#include <string>
#include <string_view>

namespace sondrix {

struct RunResult;

// One line of JSON for a source: source, result, line (the last of the log line), points, soundings,
// withDepth, frames, channels, outputs, lost, fault, seconds. Bytes that are no UTF-8 become the replacement
// character.
std::string JsonLine(std::string_view source, const RunResult& result, std::string_view line, double seconds);

}  // namespace sondrix
