#include "geo/angles.h"

#include "core/fault.h"
#include "core/rounding.h"
#include "geo/constants.h"

#include <cmath>

namespace sondrix {

double Atan2(double y, double x) {
  Finite(x);
  Finite(y);
  if (y > 0) {
    if (x >= y) return std::atan(y / x);
    if (x > -y) return HalfPi - std::atan(x / y);
    return std::atan(y / x) + Pi;
  }
  if (x >= -y) return std::atan(Finite(y / x));
  if (x <= y) return std::atan(y / x) - Pi;
  return -std::atan(x / y) - HalfPi;
}

double WrapLon(double degrees) { return 2 * FMod(degrees / 2 + 90, 180, true) - 180; }

double FMod(double a, double b, bool floored) {
  constexpr double epsilon = 2.220446049250313e-16;
  if (b == 0) throw Fault(FaultNumber::DivisionByZero);
  const double quotient = Finite(a / b);
  const double rest = Finite(a - (floored ? std::floor(quotient) : std::trunc(quotient)) * b);
  return std::fabs(rest) <= epsilon ? 0 : rest;
}

}  // namespace sondrix
