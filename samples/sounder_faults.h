#pragma once

#include "samples/chart_trip.h"
#include "samples/xorshift.h"

#include <vector>

namespace sondrix {

// How often a sounder fails.
struct SounderFaults {
  double Smallest = 0;     // metres, what it tells when it sees no bottom
  int SpikesPerMille = 0;  // of the soundings
  double LostEvery = 0;    // metres of way from one stretch of lost bottom to the next; 0: none
};

// Makes soundings of a trip wrong that are right so far. Stretches are 5 to 300 soundings long, and 300 m of
// way, and end where a line does; spikes stand alone.
void FailSounder(const SounderFaults& faults, double secondsBetween, std::vector<TrueSounding>& soundings,
                 XorShift& random);

}  // namespace sondrix
