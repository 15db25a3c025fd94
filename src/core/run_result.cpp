#include "core/run_result.h"

#include <algorithm>

namespace sondrix {

std::string_view NameOf(RunEnd end) {
  constexpr std::string_view names[] = {"finished", "refused", "stopped", "ended early", "failed"};
  return names[static_cast<std::size_t>(end)];
}

bool RunResult::IsWell() const {
  const bool isWanted = end == RunEnd::Finished || end == RunEnd::Stopped;
  return isWanted && lost.empty() &&
         std::all_of(outputs.begin(), outputs.end(), [](const RunOutput& output) { return output.isWhole; });
}

std::string LineOf(const RunResult& result, const Messages& messages) {
  if (result.message) return std::string(messages.*result.message);
  return result.fault ? FaultLine(result.place, *result.fault) : std::string();
}

}  // namespace sondrix
