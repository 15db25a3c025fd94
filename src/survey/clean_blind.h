#pragma once

#include "core/sounding_list.h"

namespace sondrix {

// blind for used soundings whose recorded depth isn't a number above 0.
void MarkWithoutDepth(SoundingList& soundings);

// blind for the trip's smallest depth where the instrument holds it while the echo is lost: it is at most 1
// m, a run of at least five soundings holds it, and of the changes between it and other depths at least four
// in five are jumps, by more than itself and half a metre. A real shallow is come to by degrees. (From
// recordings of survey sounders that hold 0.4 m, M. Bücker and others, data of two karst lakes, 2020.)
void MarkHeldSmallest(SoundingList& soundings);

}  // namespace sondrix
