#pragma once

namespace sondrix {

// What the direct formula yields about a geodesic, in Vincenty's notation.
struct VincentyState {
  double sinU1 = 0;
  double cosU1 = 0;
  double sigma = 0;  // radians
  double sinSigma = 0;
  double cosSigma = 0;
  double cosAlpha1 = 0;
  double cosSqAlpha = 0;
  double cos2SigmaM = 0;
  double sinAlpha = 0;
  double sinAlpha1 = 0;
  double lambda1 = 0;  // start longitude, radians
};

// The direct geodesic problem on WGS84, T. Vincenty, "Direct and inverse solutions of geodesics on the
// ellipsoid with application of nested equations", Survey Review 23 (1975). Start in degrees, azimuth in
// radians clockwise from north, distance in metres. At most ten passes; the last one's values stand.
VincentyState VincentyFwd(double lat, double lon, double azimuth, double distance);

struct LatLon {
  double Lat = 0, Lon = 0;  // degrees
};

// Where that geodesic ends, rounded to digits decimals. Fault 6 where a value isn't finite.
LatLon DestPoint(double lat, double lon, double azimuth, double distance, int digits);

}  // namespace sondrix
