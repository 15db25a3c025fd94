#pragma once

#include "core/fault.h"

#include <string>

namespace sondrix {

// What is told of a source that couldn't be read, and of an output that couldn't be made. The descriptions of
// faults are for those who know them by their numbers.
std::string SourceProblem(const Fault& fault);
std::string OutputProblem(const Fault& fault);

}  // namespace sondrix
