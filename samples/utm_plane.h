#pragma once

// Places between the globe and the plane of a UTM zone, on WGS84, for made waters whose charts are compared
// with their truth in metres.

namespace sondrix {

struct GlobePlace {
  double Lat = 0, Lon = 0;  // degrees
};

struct PlanePlace {
  double X = 0, Y = 0;  // metres, east and north
};

// Transverse Mercator by the series of Krueger (1912) to the fourth order of the third flattening, as Karney
// gives them ("Transverse Mercator with an accuracy of a few nanometers", 2011): within a micrometre inside
// the zone. On the northern half of the globe.
PlanePlace UtmPlace(const GlobePlace& place, int zone);
GlobePlace UtmGlobePlace(const PlanePlace& place, int zone);

// What is to be added to a course on the plane for that on the globe: radians, positive to the east of the
// zone's middle, within 1e-4 inside the zone.
double UtmConvergence(const GlobePlace& place, int zone);

}  // namespace sondrix
