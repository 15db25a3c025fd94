#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Waters of different kind, drawn by a seed, whose beds are known everywhere: what a depth model is measured
// on.

namespace sondrix {

struct MadeWater;

const MadeWater* MadeWaterOf(std::string_view name);  // null when there is none

// A line for each water: name, line spacing in metres, what it is.
std::string MadeWaterLines();

// Writes into the folder, which is made: NAME.csv, a table of latitude, longitude, depth, and of some waters
// time; NAME.xyz, easting, northing and depth of the same soundings in EPSG:32637, without a head;
// NAME-bed.asc, the true bed as a text grid of the same projection, -9999 on land, its cell a sixth of the
// line spacing. Metres, positive down. False when one can't be written.
bool WriteMadeWater(const MadeWater& water, const std::string& folder, std::uint32_t seed);

}  // namespace sondrix
