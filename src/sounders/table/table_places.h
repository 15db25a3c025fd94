#pragma once

#include "core/sounding_list.h"

#include <cstdint>

namespace sondrix {

// Gives soundings without a position one by their time: at the time of a fix beside them its own, and between
// two fixes at most 10 s and 30 m apart a place on the straight way. How many got one.
std::uint64_t PlaceByTime(SoundingList& soundings);

// Exchanges longitudes and latitudes of all.
void SwapPlaces(SoundingList& soundings);

// Depths of the other sign.
void TurnDepths(SoundingList& soundings);

}  // namespace sondrix
