#pragma once

#include "core/sounding_list.h"

namespace sondrix {

// Gives all soundings a fate anew: no-position where there is no fix, the fix is 0, 0 or no place of the
// earth, else used.
void MarkWithoutPosition(SoundingList& soundings);

// no-position for fixes that no boat comes to: between the first soundings of two places it would be faster
// than 30 m/s over the 10 m by which fixes may scatter. Of the parts between such jumps those are kept that
// follow one another without a jump and last longest; that two kept parts lie across a jump costs 60 s, so a
// part that goes on elsewhere for longer is kept as a line of its own. Longest chain by dynamic programming
// (R. Bellman, Dynamic Programming, 1957) over up to 50 parts back. Soundings without a time, or behind a
// clock that was set back, aren't judged.
void MarkJumpsOfPlace(SoundingList& soundings);

// Begins a line where two places follow one another further apart than 50 m and than ten of the trip's usual
// steps, where ten minutes passed, and behind soundings without a position that would have begun one. The
// usual step is the median of the steps.
void BeginLines(SoundingList& soundings);

}  // namespace sondrix
