#pragma once

#include "survey/clean.h"
#include "survey/track_section.h"

namespace sondrix {

// Marks as lost the pieces of a section that no bed explains together with the rest, and adds its pieces to
// the stretches if it has more than one.
//
// Kept is the chain of pieces that costs least (dynamic programming, R. Bellman, 1957, up to 64 pieces back):
//   - that two kept pieces lie across a jump costs 1 up to 5 m, what a bed's step may have, and up to 6 where
//     it is larger by two of its standard deviations and by a metre at least; across a gap the bed may also
//     fall a metre a metre;
//   - that pieces between two kept ones are lost costs 3, and up to 6 more by their share of the section;
//   less where they
//     are shorter than 8 m of way, down to 1 below 2 m, and 0.8 where both jumps halve the depth or both
//     double it (an echo that came twice, or the half of it), unless a step of 5 m would look the same.
// So a stretch that begins and ends with a jump of more than a step is lost unless it is most of the track,
// one between two steps isn't, and a single jump leaves both sides.
void FindLost(TrackSection& section, Stretches& stretches);

}  // namespace sondrix
