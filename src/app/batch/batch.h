#pragma once

namespace sondrix {

// The whole batch program: one click for each source. Prints on stdout and stderr and returns the exit
// status.
int RunBatch(int argc, const char* const* argv);

}  // namespace sondrix
