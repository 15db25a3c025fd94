#pragma once

#include <cmath>
#include <cstdint>

namespace sondrix {

// The nearest integer, ties to even. Fault 6 where it doesn't fit the width.
std::int64_t ToWhole(double x);
std::int32_t ToWhole32(double x);
std::int16_t ToWhole16(double x);
std::uint8_t ToByte(double x);

// x rounded to digits decimals, ties to even. Fault 6 for a NaN or an infinity.
double RoundEven(double x, int digits);

// Hands x through, or throws fault 6 if it is a NaN or an infinity: for the results of arithmetic.
[[noreturn]] void ThrowOverflow();
inline double Finite(double x) {
  if (!std::isfinite(x)) ThrowOverflow();
  return x;
}

// 10 to the power digits, from a table as far as a 64-bit float holds it exactly; C libraries differ in the
// last digit of a negative power, the quotient is the nearest float everywhere.
inline double PowerOfTen(int digits) {
  constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                               1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  if (digits < -22 || digits > 22) return std::pow(10.0, digits);
  return digits >= 0 ? powers[digits] : 1 / powers[-digits];
}

// floor(x * 10^digits + 0.5) / 10^digits in 64-bit floats: ties go towards plus infinity. Fault 6 for a NaN
// or an infinity. Several of these stand in the way of every frame.
inline double RoundTo(double x, int digits) {
  const double power = PowerOfTen(digits);
  return Finite(std::floor(x * power + 0.5) / power);
}

// The 32-bit float nearest to 0.3048, widened: metres in a foot for every step of the system.
inline constexpr double MetresPerFoot = 0.30480000376701355;

}  // namespace sondrix
