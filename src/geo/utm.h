#pragma once

namespace sondrix {

// Metres.
struct UtmPosition {
  double Easting = 0, Northing = 0;
};

// Degrees to UTM, rounded to 2 decimals: Transverse Mercator by the series I to VI of the
// Ordnance Survey, "A guide to coordinate systems in Great Britain". No exceptions of the zone grid, and no
// false northing in the south, where northings are negative. Fault 6 where a value isn't finite.
UtmPosition Ll2Utm(double lat, double lon);

// The meridional arc in metres from phi0 to phi (radians); b is the scaled semi-minor axis in metres, n the
// third flattening. Same source.
double Marc(double b, double n, double phi0, double phi);

}  // namespace sondrix
