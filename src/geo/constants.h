#pragma once

namespace sondrix {

// The figures on which the last digits of all positions depend. Several are shorter than a 64-bit float could
// hold; better ones would give other texts.
inline constexpr double Pi = 3.14159265358979;
inline constexpr double HalfPi = 1.5707963267949;
inline constexpr double Deg2Rad = 0.017453292519943;
inline constexpr double Rad2Deg = 57.2957795132;

inline constexpr double SemiMajor = 6378137.0;         // WGS84, metres
inline constexpr double SemiMinor = 6356752.31424518;  // WGS84, metres; the radius of the Lowrance sphere too
inline constexpr double Flat = 0.0033528106647474805;  // 1 / 298.257223563
inline constexpr double OneMinusFlat = 0.9966471893352525;
inline constexpr double Ecc = 0.081819190928906;          // first eccentricity
inline constexpr double ScaledMajor = 6375585.745200001;  // SemiMajor * 0.9996
inline constexpr double ScaledMinor = 6354209.613319483;  // SemiMinor * 0.9996
inline constexpr double LnBase = 2.71828182845904;

}  // namespace sondrix
