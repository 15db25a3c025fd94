#include "geo/near_places.h"

#include <cmath>

namespace sondrix {

double MetresBetween(double fromLongitude, double fromLatitude, double toLongitude, double toLatitude) {
  constexpr double radian = std::numbers::pi / 180;
  const double east = std::remainder(toLongitude - fromLongitude, 360.0) * std::cos(fromLatitude * radian);
  return MetresOfDegree * std::hypot(east, toLatitude - fromLatitude);
}

double LongitudeBetween(double from, double to, double part) {
  if (std::abs(to - from) > 180) to += to < from ? 360 : -360;
  const double longitude = from + (to - from) * part;
  return longitude > 180 ? longitude - 360 : longitude < -180 ? longitude + 360 : longitude;
}

}  // namespace sondrix
