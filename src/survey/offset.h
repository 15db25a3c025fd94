#pragma once

#include "core/sounding_list.h"

#include <cstdint>

namespace sondrix {

// Moves the soundings of a trip from the antenna to the transducer, so many metres to the right and ahead of
// it. The boat's heading is taken for its course over ground, from a way of 6 metres or more about the
// sounding within its line of track, so that steps of a position that is kept in whole metres, and a boat
// that lies still, turn nothing. What has no position or the fate NoPosition stays. Returns how many others
// stay too, since their line shows no course.
std::uint64_t ApplyOffset(SoundingList& soundings, double right, double ahead);

// Adds metres to each depth above 0; what was recorded stays.
void ApplyDraft(SoundingList& soundings, double draft);

}  // namespace sondrix
