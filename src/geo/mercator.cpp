#include "geo/mercator.h"

#include "core/rounding.h"
#include "geo/constants.h"

#include <cmath>
#include <numbers>

namespace sondrix {

double MercY2Lat(double y, int digits) {
  const double lat = (2 * std::atan(Finite(std::exp(y / SemiMinor))) - HalfPi) * Rad2Deg;
  return RoundTo(lat, digits);
}

double MercX2Lon(double x, int digits) { return RoundTo((x / SemiMinor) * Rad2Deg, digits); }

double LatitudeOfMercY(double y) { return std::atan(std::sinh(y / SemiMinor)) * (180 / std::numbers::pi); }

double LongitudeOfMercX(double x) { return x / SemiMinor * (180 / std::numbers::pi); }

double Lon2MercX(double longitude) { return Finite((longitude * Pi / 180) * ScaledMajor); }

double Lat2MercY(double latitude) {
  const double phi = latitude * Pi / 180;
  const double s = std::sin(phi);
  const double c = std::pow((1 - Ecc * s) / (1 + Ecc * s), Ecc / 2);
  const double t = std::tan(phi / 2 + Pi / 4) * c;
  return Finite((std::log(t) / std::log(LnBase)) * ScaledMajor);
}

}  // namespace sondrix
