#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace sondrix {

inline constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

// What became of a sounding; the names are those of the outputs.
enum class Fate : std::uint8_t {
  Used,
  NoPosition,  // no fix, or one that no boat comes to
  Blind,       // the instrument told no depth, or held its smallest
  Lost,        // in a stretch at a wrong bottom
  Spike,       // alone off its neighbours
  Repeat,      // told before by the same trip
};
inline constexpr std::size_t FateCount = 6;
std::string_view NameOf(Fate fate);  // "used", "no-position", "blind", "lost", "spike", "repeat"

// One depth at one place. Positions hold whole units of 1e-8 degrees, times whole milliseconds, depths whole
// millimetres (see Kept), so that what is written as text and read back is the same sounding.
struct Sounding {
  double longitude = Unknown, latitude = Unknown;  // degrees, WGS84; not a number: nothing is stored
  double time = Unknown;                           // seconds since 1970 UTC
  float recorded = 0;      // metres, positive down, as the source has it; not a number: none told
  float depth = 0;         // metres, corrected
  std::uint32_t trip = 0;  // index into the survey's trips
  std::uint8_t channel = NoChannel;
  Fate fate = Fate::Used;
  bool beginsLine = false;  // the track is interrupted before it

  static constexpr std::uint8_t NoChannel = 255;
  bool HasPosition() const { return !std::isnan(longitude) && !std::isnan(latitude); }
  bool HasTime() const { return !std::isnan(time); }
};
static_assert(sizeof(Sounding) <= 40);

// The nearest of the numbers that a sounding keeps.
inline double KeptDegrees(double degrees) { return std::round(degrees * 1e8) / 1e8; }
inline double KeptSeconds(double seconds) { return std::round(seconds * 1e3) / 1e3; }
inline float KeptMetres(double metres) { return static_cast<float>(std::round(metres * 1e3) / 1e3); }

}  // namespace sondrix
