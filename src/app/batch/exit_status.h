#pragma once

#include <string_view>

namespace sondrix {

struct Messages;

inline constexpr int ExitWell = 0;    // every source ended well
inline constexpr int ExitFailed = 1;  // a run was refused, failed or was interrupted
inline constexpr int ExitUsage = 2;   // wrong usage; nothing was run

// Whether the last line of a run is neither a fault nor a refusal, names no error, and shows that a job ran.
bool EndedWell(std::string_view lastLine, const Messages& messages);

}  // namespace sondrix
