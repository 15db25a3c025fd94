#include "samples/utm_plane.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Radian = Pi / 180;

constexpr double Major = 6378137.0;  // WGS84, metres
constexpr double F = 1 / 298.257223563;
constexpr double N = F / (2 - F);
constexpr double N2 = N * N, N3 = N2 * N, N4 = N2 * N2;
constexpr double Rectifying = Major / (1 + N) * (1 + N2 / 4 + N4 / 64);
constexpr double Scale = 0.9996;
constexpr double FalseEasting = 500'000;

constexpr double Forward[] = {N / 2 - 2 * N2 / 3 + 5 * N3 / 16 + 41 * N4 / 180,
                              13 * N2 / 48 - 3 * N3 / 5 + 557 * N4 / 1440, 61 * N3 / 240 - 103 * N4 / 140,
                              49561 * N4 / 161280};
constexpr double Backward[] = {N / 2 - 2 * N2 / 3 + 37 * N3 / 96 - N4 / 360,
                               N2 / 48 + N3 / 15 - 437 * N4 / 1440, 17 * N3 / 480 - 37 * N4 / 840,
                               4397 * N4 / 161280};

double MiddleOf(int zone) { return 6.0 * zone - 183; }  // degrees

// The tangent of the conformal latitude of that of the geographic one.
double Conformal(double tangent) {
  static const double ecc = std::sqrt(F * (2 - F));
  const double sigma = std::sinh(ecc * std::atanh(ecc * tangent / std::hypot(1, tangent)));
  return tangent * std::hypot(1, sigma) - sigma * std::hypot(1, tangent);
}

// Its inverse by Newton's method.
double Geographic(double conformal) {
  constexpr double rest = (1 - F) * (1 - F);
  double tangent = conformal / rest;
  for (int i = 0; i < 5; ++i) {
    const double found = Conformal(tangent);
    tangent += (conformal - found) * (1 + rest * tangent * tangent) /
               (rest * std::hypot(1, tangent) * std::hypot(1, found));
  }
  return tangent;
}

struct Strip {
  double Xi, Eta;  // northwards and eastwards, radians
};

Strip Add(const Strip& at, const double (&series)[4], double sign) {
  Strip sum = at;
  for (std::size_t j = 0; j < 4; ++j) {
    const double twice = 2.0 * static_cast<double>(j + 1);
    sum.Xi += sign * series[j] * std::sin(twice * at.Xi) * std::cosh(twice * at.Eta);
    sum.Eta += sign * series[j] * std::cos(twice * at.Xi) * std::sinh(twice * at.Eta);
  }
  return sum;
}

}  // namespace

PlanePlace UtmPlace(const GlobePlace& place, int zone) {
  const double east = (place.Lon - MiddleOf(zone)) * Radian;
  const double tangent = Conformal(std::tan(place.Lat * Radian));
  const Strip sphere = {std::atan2(tangent, std::cos(east)),
                        std::asinh(std::sin(east) / std::hypot(tangent, std::cos(east)))};
  const Strip strip = Add(sphere, Forward, 1);
  return {FalseEasting + Scale * Rectifying * strip.Eta, Scale * Rectifying * strip.Xi};
}

GlobePlace UtmGlobePlace(const PlanePlace& place, int zone) {
  const Strip strip = {place.Y / (Scale * Rectifying), (place.X - FalseEasting) / (Scale * Rectifying)};
  const Strip sphere = Add(strip, Backward, -1);
  const double tangent = std::sin(sphere.Xi) / std::hypot(std::sinh(sphere.Eta), std::cos(sphere.Xi));
  const double east = std::atan2(std::sinh(sphere.Eta), std::cos(sphere.Xi));
  return {std::atan(Geographic(tangent)) / Radian, MiddleOf(zone) + east / Radian};
}

double UtmConvergence(const GlobePlace& place, int zone) {
  return (place.Lon - MiddleOf(zone)) * Radian * std::sin(place.Lat * Radian);
}

}  // namespace sondrix
