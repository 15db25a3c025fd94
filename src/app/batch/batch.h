#pragma once

#include <span>
#include <string>

namespace sondrix {

// The whole batch program, with the arguments behind its name: one click for each source. Prints on stdout
// and stderr and returns the exit status.
int RunBatch(std::span<const std::string> arguments);

}  // namespace sondrix
