#pragma once

#include <cstdint>
#include <vector>

// The demonstration's lake at 56 N 37 E. Its plane is in metres, x east and y north of where the boat starts.

namespace sondrix {

// Depth of the bottom, metres: falls to the south-east, with a hole, a hump and ripples, and never below 0.4
// m.
double LakeDepth(double x, double y);

// Height of the weed above the bottom, metres; 0 where none grows.
double LakeWeed(double x, double y);

// A place of the plane on the globe: degrees, and metres of the sounder's spherical Mercator projection.
struct LakePlace {
  double Lat, Lon, MercX, MercY;
};
LakePlace LakePlaceOf(double x, double y);

// The recording as an SL3: three legs and two turns, one to each hand, 80 seconds at 15 pings a second on
// Primary, Downscan, Sidescan and 3D. Two fish, and in one of the weed beds a stretch where the sounder takes
// the top of the weed for the bottom.
std::vector<std::uint8_t> LakeEchogram();

}  // namespace sondrix
