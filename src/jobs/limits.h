#pragma once

#include "core/run_limits.h"

namespace sondrix {

struct Settings;

// The numbers of a run from the fields. A field that isn't numeric counts as 0, but DepthSm is fault 13
// unless it is empty; fault 6 where a number doesn't fit its width.
RunLimits LimitsOf(const Settings& settings);

}  // namespace sondrix
