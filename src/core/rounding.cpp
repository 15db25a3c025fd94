#include "core/rounding.h"

#include "core/fault.h"

#include <limits>

namespace sondrix {

namespace {

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

void ThrowOverflow() { throw Fault(FaultNumber::Overflow); }

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
