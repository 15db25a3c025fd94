#pragma once

#include "samples/utm_plane.h"
#include "samples/xorshift.h"

#include <vector>

// The ways of boats that sound the charted lake, on its plane.

namespace sondrix {

// Lanes to and fro across the lake, or, with a spacing of 0, rounds along the shores.
struct WayPlan {
  double Angle = 0;           // of the lanes, degrees clockwise from the plane's north
  double Spacing = 0;         // metres from lane to lane
  double OffShore = 25;       // metres that are kept from the shores
  double Length = 1e9;        // metres of lanes, at most
  double Speed = 2;           // metres a second
  double TurnRadius = 8;      // metres
  double SecondsBetween = 1;  // from sounding to sounding
  int ShiftHundredths = 0;    // of the spacing, of all lanes
};

struct WayPoint {
  double X = 0, Y = 0;      // metres
  double Course = 0;        // radians clockwise from the plane's north
  double Speed = 0;         // metres a second
  double Time = 0;          // seconds since the start
  bool BeginsLine = false;  // the boat went there without sounding
};

// Where the boat is at each sounding. It wanders about its lanes by a few metres and takes time for its
// turns.
std::vector<WayPoint> WayOf(const WayPlan& plan, XorShift& random);

}  // namespace sondrix
