#pragma once

namespace sondrix {

// Lowrance Mercator metres to degrees, rounded to digits decimals: the inverse of the spherical Mercator on a
// sphere of the radius SemiMinor. Fault 6 where the result isn't finite.
double MercY2Lat(double y, int digits);
double MercX2Lon(double x, int digits);

// The same in full, of any finite metres.
double LatitudeOfMercY(double y);
double LongitudeOfMercX(double x);

// Degrees to planar metres for distances between near points, on the ellipsoid of ScaledMajor (ellipsoidal
// Mercator). Not the inverse of the above. Fault 6 at a pole.
double Lon2MercX(double longitude);
double Lat2MercY(double latitude);

}  // namespace sondrix
