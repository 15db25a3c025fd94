#pragma once

#include <numbers>

namespace sondrix {

// Mean radius R1 of the earth, metres (IUGG; H. Moritz, Geodetic Reference System 1980).
inline constexpr double MeanRadius = 6371008.8;

// A degree of a meridian on the sphere of that radius, metres.
inline constexpr double MetresOfDegree = MeanRadius * std::numbers::pi / 180;

// Metres between two near places on that sphere, given in degrees; also across the date line.
double MetresBetween(double fromLongitude, double fromLatitude, double toLongitude, double toLatitude);

// The longitude, -180 to 180 degrees, at a part (0 to 1) of the shorter way between two.
double LongitudeBetween(double from, double to, double part);

}  // namespace sondrix
