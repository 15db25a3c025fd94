#pragma once

#include "survey/survey.h"

#include <span>

namespace sondrix {

// A run of a trip's soundings between two jumps of its depth, as the trip alone lets it be judged.
struct Stretch {
  std::uint32_t first = 0, last = 0;  // indexes into the trip's soundings
  std::uint32_t line = 0;             // counts the trip's lines of track
  bool isLost = false;
};

// What cleaning one trip found that other trips may still overrule: the stretches of the lines that have more
// than one, in their order. Lines without a jump have none.
using Stretches = std::vector<Stretch>;

// Gives each sounding of a trip its fate, in this order, by what each header tells:
//   no-position   clean_position.h, which begins lines too
//   blind         clean_blind.h
//   repeat        clean_repeats.h
//   spike, lost   clean_spikes.h, clean_scatter.h and clean_lost.h, line by line
// Judged is the recorded depth. Trips don't know of each other, so they may be cleaned in parallel. Needs 40
// MiB beside the soundings at most, whatever the trip's length, and 16 bytes a stretch; where its times
// aren't in order 4 bytes a sounding more, where its positions jump everywhere 24.
Stretches CleanTrip(Trip& trip);

// Judges the stretches of all trips once more by the soundings of other trips, or of the same trip at another
// time, at the same places (clean_crossings.h): some get lost, others are used again. stretches[i] is what
// CleanTrip gave for trips[i].
void CleanByCrossings(Survey& survey, std::span<const Stretches> stretches);

// What --clean off does: all with a position and a depth above 0 is used, the rest is no-position or blind.
// Lines begin as in CleanTrip.
void CleanOff(Trip& trip);

}  // namespace sondrix
