#pragma once

#include <cstdint>

namespace sondrix {

// floor(x * 10^digits + 0.5) / 10^digits in 64-bit floats: ties go towards plus infinity. Fault 6 for a NaN
// or an infinity.
double RoundTo(double x, int digits);

// The nearest integer, ties to even. Fault 6 where it doesn't fit the width.
std::int64_t ToWhole(double x);
std::int32_t ToWhole32(double x);
std::int16_t ToWhole16(double x);
std::uint8_t ToByte(double x);

// x rounded to digits decimals, ties to even. Fault 6 for a NaN or an infinity.
double RoundEven(double x, int digits);

// Hands x through, or throws fault 6 if it is a NaN or an infinity: for the results of arithmetic.
double Finite(double x);

// The 32-bit float nearest to 0.3048, widened: metres in a foot for every step of the system.
inline constexpr double MetresPerFoot = 0.30480000376701355;

}  // namespace sondrix
