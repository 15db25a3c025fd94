#pragma once

#include "survey/levels/crossings.h"

#include <cstdint>

namespace sondrix {

// A sounding of a trip.
struct SoundingPlace {
  std::uint32_t trip = 0, at = 0;
};

// What two tracks tell of the place where these two soundings are nearest to each other. Each side's depth is
// the median of the soundings within 1.5 m of way, five at most, so that neither a step of the recorder nor a
// slope makes it. The slope is that of the plane through both tracks' slopes along their way (by least
// squares over 8 m to each side); of tracks that run nearly side by side, which don't tell the slope across
// them, the steeper one's. The noise is the median absolute second difference along each way, as of normal
// errors.
Crossing CrossingOf(const Survey& survey, SoundingPlace a, SoundingPlace b);

}  // namespace sondrix
