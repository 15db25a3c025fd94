#include "core/rounding.h"

#include <array>
#include <cmath>
#include <limits>

#include "core/fault.h"

namespace sondrix {

namespace {

// Every power of ten that a 64-bit float holds exactly.
constexpr std::array<double, 23> PowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double PowerOfTen(int digits) {
  if (digits >= 0 && digits < static_cast<int>(PowersOfTen.size()))
    return PowersOfTen[static_cast<std::size_t>(digits)];
  return std::pow(10.0, digits);
}

// low and high are whole numbers; the value is tested before it is narrowed.
std::int64_t WholeWithin(double x, double low, double high) {
  const double whole = std::nearbyint(x);
  if (!(whole >= low && whole <= high)) throw Fault(FaultNumber::Overflow);
  return static_cast<std::int64_t>(whole);
}

template <typename Whole>
Whole Narrowed(double x) {
  using Limits = std::numeric_limits<Whole>;
  return static_cast<Whole>(WholeWithin(x, Limits::min(), Limits::max()));
}

}  // namespace

double Finite(double x) {
  if (!std::isfinite(x)) throw Fault(FaultNumber::Overflow);
  return x;
}

double RoundTo(double x, int digits) {
  const double power = PowerOfTen(digits);
  return Finite(std::floor(x * power + 0.5) / power);
}

double RoundEven(double x, int digits) {
  const double power = PowerOfTen(digits);
  return Finite(std::nearbyint(x * power) / power);
}

std::int64_t ToWhole(double x) {
  // The largest 64-bit float below 2^63.
  return WholeWithin(x, -9223372036854775808.0, 9223372036854774784.0);
}

std::int32_t ToWhole32(double x) { return Narrowed<std::int32_t>(x); }
std::int16_t ToWhole16(double x) { return Narrowed<std::int16_t>(x); }
std::uint8_t ToByte(double x) { return Narrowed<std::uint8_t>(x); }

}  // namespace sondrix
