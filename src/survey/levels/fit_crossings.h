#pragma once

#include "survey/levels/crossings.h"
#include "survey/levels/level_fit.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// A crossing as a fit sees it.
struct FitCrossing {
  std::uint32_t a = 0, b = 0;  // trips
  double timeA = Unknown, timeB = Unknown;
  double difference = 0;   // metres, a's depth less b's
  double error = 0;        // metres: what noise, slope and distance let expect of it
  std::uint32_t pair = 0;  // counts the pairs of trips, in the order of a and b
};

// At most so many, taken evenly from each pair of trips, so that a landing where all boats pass doesn't
// outweigh the rest: a pair with many says little more than one with some dozens. By pairs.
std::vector<FitCrossing> CrossingsToFit(std::span<const Crossing> crossings, std::size_t atMost);

// How trips hang together by crossings: for each trip the lowest one that it is tied to; its own where it
// crosses no other one, or none often enough to tell its level.
std::vector<std::uint32_t> TiedTrips(std::span<const FitCrossing> crossings, const TripGroups& groups);

// Sets what holds for all fits of crossings: trips that aren't tied to others keep their depths and say why;
// the others get levels whose mean over their soundings is zero in each set of trips tied together. Returns
// a remark where there is more than one set.
void SettleZero(const Survey& survey, std::span<const std::uint32_t> tied, LevelFit& fit);

}  // namespace sondrix
