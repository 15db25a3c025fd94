#pragma once

#include "survey/survey.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace sondrix {

// One of the two tracks at a crossing.
struct CrossingSide {
  std::uint32_t trip = 0;
  std::uint32_t at = 0;   // the sounding of the trip that stands for the pass
  double time = Unknown;  // seconds since 1970 UTC, of the pass
  float depth = 0;        // metres, corrected so far
  float recorded = 0;     // metres
};

// A place where two tracks come close to each other at different times.
struct Crossing {
  CrossingSide a, b;                   // a's trip is the lower one, or a the earlier pass of the same trip
  double longitude = 0, latitude = 0;  // degrees
  float apart = 0;                     // metres between the two
  float slope = 0;                     // of the bed there, metres a metre
  float noise = 0;                     // standard deviation of the difference of the depths, metres, from
                                       // both passes' scatter
  float Difference() const { return a.depth - b.depth; }  // metres
};

struct CrossingSearch {
  double within = 4;       // metres
  double otherTime = 300;  // seconds between two passes of one trip; by way, 30 m, where times are unknown
  int threads = 1;
  std::function<bool()> isToEnd;  // asked now and then; EndAsked is thrown then
};

// All crossings of used soundings, in the order of places and trips, the same for any number of threads.
// Where many passes meet in one place (a landing), each pass is compared with a bounded number of others,
// spread evenly over trips, so that the work stays n log n.
std::vector<Crossing> FindCrossings(const Survey& survey, const CrossingSearch& search);

// Brings the crossings' depths up to those of the survey.
void RenewDepths(const Survey& survey, std::span<Crossing> crossings);

// How trips fit each other.
struct Misfit {
  std::uint64_t count = 0;
  double median = Unknown;          // of the absolute differences, metres
  double rootMeanSquare = Unknown;  // metres
};
Misfit MisfitOf(std::span<const Crossing> crossings);

// Of each pair of trips that cross: one row each, by a, then b (a == b: a trip and itself).
struct PairMisfit {
  std::uint32_t a = 0, b = 0;
  Misfit misfit;
  double difference = Unknown;  // median of a's depth less b's, metres
};
std::vector<PairMisfit> PairMisfits(std::span<const Crossing> crossings);

// Those with the largest absolute differences, by it, no two of one pair of trips within 25 m.
std::vector<Crossing> WorstCrossings(std::span<const Crossing> crossings, std::size_t count);

}  // namespace sondrix
