#pragma once

#include "core/sounding_list.h"
#include "survey/track_section.h"

#include <span>

namespace sondrix {

// The step in which a trip's depths are told, metres: the largest of a foot, 0.1 m, a tenth of a foot, 0.05 m
// and 0.01 m of which nearly all depths are multiples; 0.001 where none is.
float DepthResolution(const SoundingList& soundings);

// Sets the noise of each NoiseBlock: the standard deviation that the median absolute deviation of a sounding
// from the line between its neighbours stands for (F. R. Hampel, The influence curve and its role in robust
// estimation, 1974), so that a slope adds nothing to it. The largest of the block and those beside it, at
// least half the resolution, 0.5 % of the depth and 2 cm.
void FindNoise(TrackSection& section, float resolution);

// Marks as spikes the soundings that nothing around them explains: further than five times the noise, and
// half of what the slope changes over their step, from what the two soundings before, and the two behind, let
// expect with the running median of the slope there (J. W. Tukey, Exploratory Data Analysis, 1977), and not
// between those beside them. Both feet and the top of a steep wall are explained by one of their sides. Done
// twice, the second time without the spikes of the first.
void FindSpikes(TrackSection& section);

}  // namespace sondrix
