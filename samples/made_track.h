#pragma once

#include <cstdint>
#include <vector>

namespace sondrix {

// A boat's way whose truth is known, as a recorder with whole Mercator metres stores it.
struct MadeTrack {
  double speed = 1;                        // m/s
  double fixEvery = 1;                     // seconds
  double turn = 0;                         // radians a second
  double sway = 0;                         // greatest turn of a serpentine, radians a second
  double heading = 0.7;                    // at its start, radians clockwise from north
  double latitude = 53;                    // degrees
  double noise = 0;                        // of a fix, metres
  double restFrom = 1e9, restUntil = 1e9;  // seconds: the boat lies still
  double lostFrom = 1e9, lostUntil = 1e9;  // seconds: no fix
  double jumpAt = 1e9, jump = 0;           // one fix so many metres off
  double seconds = 180;
  double framesPerSecond = 15;
  std::uint32_t seed = 1;
};

inline constexpr double MadeRadius = 6356752.3142;  // metres, of the recorder's sphere

struct MadePing {
  double time = 0;      // seconds
  double x = 0, y = 0;  // true, Mercator metres
  std::int32_t storedX = 0, storedY = 0;
};

std::vector<MadePing> PingsOf(const MadeTrack& track);

// The recording of it: Primary, and of an SL3 Downscan too, without depths and some milliseconds later.
std::vector<std::uint8_t> RecordingOf(const std::vector<MadePing>& pings, int formatWord);

}  // namespace sondrix
