#pragma once

#include "core/sounding_list.h"

namespace sondrix {

// repeat for used soundings that equal an earlier used one of the trip in time, place and recorded depth.
// Soundings without a time are never repeats. Where the times aren't in order it needs 4 bytes a sounding.
void MarkRepeats(SoundingList& soundings);

}  // namespace sondrix
