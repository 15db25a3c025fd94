#pragma once

#include "samples/made_bed.h"
#include "samples/made_ways.h"

#include <span>
#include <string_view>
#include <vector>

namespace sondrix {

// What a made water is drawn from. Metres unless told.
struct MadeBasin {
  double u, v, halfLength, halfWidth;
};

struct MadeWater {
  std::string_view name, what;
  double lineSpacing;
  double turn;    // of the water's u from the east, degrees
  double ragged;  // how much the shore leaves an ellipse
  std::vector<MadeBasin> basins;
  BedKind bed;
  std::vector<MadePlan> plans;  // a trip each, in each basin
  double noise = 0;             // standard deviation
  bool hasTimes = false;
};

std::span<const MadeWater> MadeWaters();

}  // namespace sondrix
