#pragma once

#include "samples/made_bed.h"
#include "samples/utm_plane.h"
#include "samples/xorshift.h"

#include <vector>

// The ways of boats over a made water, on its plane.

namespace sondrix {

// Lines to and fro over a water, or, with a spacing of 0, a way without lines.
struct MadePlan {
  double spacing = 0;   // metres from line to line
  double angle = 0;     // of the lines, degrees from the direction of u
  double part = 1;      // of the water that is sailed, about its middle
  double length = 0;    // metres of a way without lines
  double step = 1.5;    // metres from sounding to sounding, about
  double wiggle = 1.5;  // metres by which the boat leaves its line
  double offShore = 6;  // metres that are kept from the shore
};

std::vector<PlanePlace> MadeWay(const MadePlan& plan, const MadeShore& shore, XorShift& random);

}  // namespace sondrix
