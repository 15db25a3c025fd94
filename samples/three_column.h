#pragma once

#include "samples/text_steps.h"

#include <string>

namespace sondrix {

// A table of latitude, longitude in degrees and depth in metres under a head line. In it: depths with and
// without decimals, a place sounded twice, a gap, a blank line at the end.
std::string ThreeColumn(const TableForm& form);

}  // namespace sondrix
