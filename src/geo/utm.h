#pragma once

#include <string>

namespace sondrix {

// Degrees to UTM metres, rounded to 2 decimals, as NumText: Transverse Mercator by the series I to VI of the
// Ordnance Survey, "A guide to coordinate systems in Great Britain". No exceptions of the zone grid, and no
// false northing in the south, where northings are negative. Fault 6 where a value isn't finite.
void Ll2Utm(double lat, double lon, std::string& northingText, std::string& eastingText);

// The meridional arc in metres from phi0 to phi (radians); b is the scaled semi-minor axis in metres, n the
// third flattening. Same source.
double Marc(double b, double n, double phi0, double phi);

}  // namespace sondrix
