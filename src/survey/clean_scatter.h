#pragma once

#include "survey/track_section.h"

namespace sondrix {

// Marks as lost the soundings of a section that scatter more than any bed: a sounder that lost the bottom
// tells depths that have nothing to do with each other. Judged are windows of 16 soundings that aren't
// spikes, each half over the one before it, by the standard deviation that the median absolute deviation of a
// sounding from the line between its neighbours stands for (F. R. Hampel, 1974; see FindNoise). A window
// scatters if it is more than 2 m, 4 % of the depth and 45 degrees over the usual way to the next sounding,
// and more than four times the median of the section's windows. Two such windows in a row are lost, since the
// deviation of so few may be twice the true one by chance; so is what lies between lost soundings at most 50
// m of way apart. Where half of the soundings between two gaps of more than five untold ones are lost, all of
// them are; a fifth is enough but where a section has no gap, since the sounder then lost the bottom before
// or behind them too. The 2 m and the fifth are from survey lines over a karst lake: sound beds of steep
// slopes come to 1 m, a lost bottom to 3 m and more, and of what a sounder told without a bottom, held
// numbers and slow drifts are the most (M. Bücker and others, data of two karst lakes, 2020).
void FindScatter(TrackSection& section);

}  // namespace sondrix
