#pragma once

#include "survey/clean.h"
#include "survey/track_section.h"

namespace sondrix {

// Marks as lost the pieces of a section that no bed explains together with the rest, and adds its pieces to
// the stretches if it has more than one.
//
// Kept is the chain of pieces that costs least (dynamic programming, R. Bellman, Dynamic Programming, 1957,
// up to 64 pieces back):
//   - Two kept pieces across a jump cost 1 up to 5 m, the step that a bed may have, and up to 6 where the
//   jump is
//     larger by three times the noise and by 1.5 m at least. A bed may fall as well, by twice the slope that
//     it has beside the jump, up to a metre a metre where that isn't known, 15 m at most.
//   - Losing the pieces between two kept ones costs 4; 0.65 where both jumps halve the depth or both double
//   it (the
//     echo of an echo, or half of one), unless both could be steps of 5 m, or where the depth goes off by
//     more than a step and comes back by the same; 2.65 where one jump is that of an echo and the other one
//     of it beside a step of 5 m; down to 1 where they are shorter than 8 m of way; up to 3.5 more where a
//     step or a slope explains one of the jumps. The jumps between them count up to 3 each (between double
//     depths as half as high), and 2.5 each piece among them that goes on with the bed before or behind; 1.5
//     if it does so across a shorter kept piece. Longer pieces cost up to 3 more by their way, up to 4 more
//     beyond 150 m (a metre more of gap counts as much again), and 15 times the square of their share of the
//     section. These costs aren't from the literature: they were fitted to made beds and to real lines with
//     planted stretches.
// So a stretch that begins and ends with a jump of more than a step is lost unless it is much of the track,
// one between two steps isn't, and a single jump leaves both sides.
void FindLost(TrackSection& section, Stretches& stretches);

}  // namespace sondrix
