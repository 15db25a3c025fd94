#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace sondrix {

struct Fix;
struct Run;

// A frame's two lists of soundings, one for each side of the boat. The left list begins 0x4C bytes into the
// payload, the right one follows it. Lengths in bytes.
struct Frame3D {
  std::span<const std::uint8_t> Payload;
  std::int16_t LeftBytes = 0;
  std::int16_t RightBytes = 0;
};

// What the 3D points carry from frame to frame of a run.
struct Points3DState {
  std::uint8_t LastPx = 0;  // DepthPx of the entry before
};

// How many entries a list of that length holds: its first 4 and its last 4 bytes belong to none. None
// below 12.
int EntriesOf(std::int16_t listBytes);

// Turns a frame's entries into lines of the CSV, placed square to the boat's direction, and draws them. Where
// a share of the width is set, replaces RunLimits.SideLimitM by that share of each list's last distance.
// Fault 9 for an entry outside the payload, fault 6 for a distance or a depth that doesn't fit a byte.
void Points3D(Run& run, Points3DState& state, const Fix& fix, const Frame3D& frame, std::string& csvBuffer);

}  // namespace sondrix
