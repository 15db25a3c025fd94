#pragma once

namespace sondrix {

// The angle of (x, y) in radians, by octants on the plain arc tangent and with Pi and HalfPi of constants.h,
// so not std::atan2: it differs in the last digits, and (0, -1) gives -Pi. Fault 6 for (0, 0).
double Atan2(double y, double x);

// Degrees brought into -180 up to but not including 180.
double WrapLon(double degrees);

// a - q * b, where q = a / b is floored or else truncated towards zero; what lies within 2.2e-16 of 0 is 0.
// Fault 11 for b = 0.
double FMod(double a, double b, bool floored);

}  // namespace sondrix
