#include "geo/vincenty.h"

#include "core/rounding.h"
#include "geo/angles.h"
#include "geo/constants.h"

#include <cmath>

namespace sondrix {

namespace {

constexpr int MaxPasses = 10;
constexpr double SigmaTolerance = 1e-12;  // radians, some micrometres on the ground

}  // namespace

VincentyState VincentyFwd(double lat, double lon, double azimuth, double distance) {
  VincentyState state;
  state.lambda1 = lon * Deg2Rad;
  const double phi1 = lat * Deg2Rad;
  state.sinAlpha1 = std::sin(azimuth);
  state.cosAlpha1 = std::cos(azimuth);

  const double tanU1 = OneMinusFlat * std::tan(phi1);
  state.cosU1 = 1 / std::sqrt(1 + tanU1 * tanU1);
  state.sinU1 = tanU1 * state.cosU1;
  const double sigma1 = Atan2(tanU1, state.cosAlpha1);
  state.sinAlpha = state.cosU1 * state.sinAlpha1;
  state.cosSqAlpha = 1 - state.sinAlpha * state.sinAlpha;

  const double uSq =
      state.cosSqAlpha * (SemiMajor * SemiMajor - SemiMinor * SemiMinor) / (SemiMinor * SemiMinor);
  const double a = 1 + uSq / 16384 * (4096 + uSq * (-768 + uSq * (320 - 175 * uSq)));
  const double b = uSq / 1024 * (256 + uSq * (-128 + uSq * (74 - 47 * uSq)));
  const double first = distance / (SemiMinor * a);

  state.sigma = first;
  for (int pass = 0; pass < MaxPasses; ++pass) {
    const double c2m = std::cos(2 * sigma1 + state.sigma);
    const double sinSigma = std::sin(state.sigma);
    const double cosSigma = std::cos(state.sigma);
    const double deltaSigma =
        b * sinSigma *
        (c2m + b / 4 *
                   (cosSigma * (-1 + 2 * (c2m * c2m)) -
                    b / 6 * c2m * (-3 + 4 * (sinSigma * sinSigma)) * (-3 + 4 * (c2m * c2m))));
    state.cos2SigmaM = c2m;
    state.sinSigma = sinSigma;
    state.cosSigma = cosSigma;
    const double oldSigma = state.sigma;
    state.sigma = first + deltaSigma;
    if (std::fabs(state.sigma - oldSigma) <= SigmaTolerance) break;
  }
  return state;
}

LatLon DestPoint(double lat, double lon, double azimuth, double distance, int digits) {
  const VincentyState s = VincentyFwd(lat, lon, azimuth, distance);
  const double t = s.sinU1 * s.sinSigma - s.cosU1 * s.cosSigma * s.cosAlpha1;
  const double phi2 = Atan2(s.sinU1 * s.cosSigma + s.cosU1 * s.sinSigma * s.cosAlpha1,
                            OneMinusFlat * std::sqrt(s.sinAlpha * s.sinAlpha + t * t));

  const double lambda =
      Atan2(s.sinSigma * s.sinAlpha1, s.cosU1 * s.cosSigma - s.sinU1 * s.sinSigma * s.cosAlpha1);
  const double c = Flat / 16 * s.cosSqAlpha * (4 + Flat * (4 - 3 * s.cosSqAlpha));
  const double l =
      lambda - (1 - c) * Flat * s.sinAlpha *
                   (s.sigma + c * s.sinSigma *
                                  (s.cos2SigmaM + c * s.cosSigma * (-1 + 2 * (s.cos2SigmaM * s.cos2SigmaM))));
  const double lambda2 = s.lambda1 + l;
  const double longitude = lambda2 == Pi ? 180 : WrapLon(lambda2 * Rad2Deg);
  return {RoundTo(phi2 * Rad2Deg, digits), RoundTo(longitude, digits)};
}

}  // namespace sondrix
