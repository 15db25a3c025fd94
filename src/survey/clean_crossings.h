#pragma once

#include "survey/clean.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// A track's way through one cell of 3 m, with what was sounded there.
struct CellPass {
  std::uint64_t cell = 0;
  float shallowest = 0, deepest = 0;  // metres
  float way = 0;                      // metres along the trip
  std::uint32_t owner = 0;  // the stretch it belongs to; behind all stretches, one number a trip for the rest
};

// How often two owners' passes through the same or touching cells agreed.
struct CrossingVotes {
  std::uint32_t one = 0, other = 0;  // owners; one < other
  std::uint32_t agree = 0, disagree = 0;
  bool isFar = false;  // disagreed by more than any water level explains
};

// The stretches of all trips one behind the other, and what is found of them.
struct CrossingStretch {
  std::uint32_t trip = 0;
  Stretch stretch;
  bool isBorneOut = false;  // more agree with it than disagree
};

// The passes of all trips near a stretch, by cell. The first and the last soundings of a stretch (a quarter,
// at most 40) stay out, since the bed may well have a step where it begins. 24 bytes a pass.
std::vector<CellPass> PassesNear(const Survey& survey, std::span<const CrossingStretch> stretches);

// By the two owners. Two passes agree if their depths lie within 1 m and a tenth of the depth, and disagree
// if they are further apart than 1 m and six tenths of it, or 7 m; between that they say nothing. Passes of
// one trip count if 30 m of way lie between them.
std::vector<CrossingVotes> VotesOf(std::span<const CellPass> passes,
                                   std::span<const CrossingStretch> stretches);

// Sets isLost anew by majority, in rounds, so that the order of the trips doesn't matter: a lost stretch with
// which more kept ones agree than disagree is used again; a kept one gets lost if more kept ones disagree
// with it than agree, and each of those stands better itself. Two trips that disagree elsewhere too, more
// often than they agree, count only where the disagreement is far, since the water may have stood otherwise.
void JudgeByVotes(std::span<CrossingStretch> stretches, std::span<const CrossingVotes> votes);

}  // namespace sondrix
