#include "geo/utm.h"

#include "core/rounding.h"
#include "geo/constants.h"

#include <cmath>

namespace sondrix {

double Marc(double b, double n, double phi0, double phi) {
  const double d = phi - phi0;
  const double s = phi + phi0;
  const double n2 = n * n;
  const double n3 = n2 * n;
  return b * ((1 + n + 5.0 / 4 * n2 + 5.0 / 4 * n3) * d -
              (3 * n + 3 * n2 + 21.0 / 8 * n3) * std::sin(d) * std::cos(s) +
              (15.0 / 8 * n2 + 15.0 / 8 * n3) * std::sin(2 * d) * std::cos(2 * s) -
              35.0 / 24 * n3 * std::sin(3 * d) * std::cos(3 * s));
}

UtmPosition Ll2Utm(double lat, double lon) {
  const int zone = ToWhole16(std::floor((lon + 180) / 6 + 1));
  const double lambda0 = (6 * zone - 183) * Deg2Rad;
  const double phi = lat * Deg2Rad;
  const double lambda = lon * Deg2Rad;

  constexpr double a = ScaledMajor;
  constexpr double b = ScaledMinor;
  constexpr double e2 = (a * a - b * b) / (a * a);
  constexpr double n = (a - b) / (a + b);

  const double sinPhi = std::sin(phi);
  const double cosPhi = std::cos(phi);
  const double cos3 = cosPhi * cosPhi * cosPhi;
  const double cos5 = cos3 * cosPhi * cosPhi;
  const double t = std::tan(phi);
  const double t2 = t * t;
  const double t4 = t2 * t2;
  const double nu = a / std::sqrt(1 - e2 * (sinPhi * sinPhi));
  const double rho = (1 - e2) * nu / (1 - e2 * (sinPhi * sinPhi));
  const double eta2 = nu / rho - 1;
  const double p = lambda - lambda0;
  const double p2 = p * p;
  const double p4 = p2 * p2;

  const double iv = nu * cosPhi;
  const double v = nu / 6 * cos3 * (nu / rho - t2);
  const double vi = nu / 120 * cos5 * (5 - 18 * t2 + t4 + 14 * eta2 - 58 * t2 * eta2);
  const double easting = 500000 + p * iv + p2 * p * v + p4 * p * vi;

  const double i = Marc(b, n, 0, phi);
  const double ii = nu / 2 * sinPhi * cosPhi;
  const double iii = nu / 24 * sinPhi * cos3 * (5 - t2 + 9 * eta2);
  const double iiia = nu / 720 * sinPhi * cos5 * (61 - 58 * t2 + t4);
  const double northing = i + p2 * ii + p4 * iii + p4 * p2 * iiia;

  return {RoundTo(easting, 2), RoundTo(northing, 2)};
}

}  // namespace sondrix
