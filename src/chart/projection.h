#pragma once

#include "chart/transform.h"

#include <string>

namespace sondrix {

// By PROJ, without its network. crs is "EPSG:n"; CantProject where that is unknown or can't be reached.

// Longitude and latitude in degrees (WGS 84) to easting and northing in metres. CantProject for what is no
// projection in metres.
Transform ToPlane(const std::string& crs);

// Easting and northing, or longitude and latitude, of any such system to longitude and latitude in degrees
// (WGS 84).
Transform ToDegrees(const std::string& crs);

}  // namespace sondrix
