#pragma once

#include "core/entry_3d.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace sondrix {

struct Fix;
struct Run;

// The soundings of a side, from the boat outwards.
struct List3D {
  std::span<const Entry3D> Entries;   // those that the frame holds
  int Count = 0;                      // how many the frame says it holds
  std::optional<float> LastDistance;  // feet, by which a share of the width counts; nothing outside the frame
};

struct Frame3DLists {
  List3D Left, Right;
};

// What the 3D points carry from frame to frame of a run.
struct Points3DState {
  std::uint8_t LastPx = 0;  // DepthPx of the entry before
};

// Turns a frame's entries into lines of the CSV, placed square to the boat's direction, and draws them. Where
// a share of the width is set, replaces RunLimits.SideLimitM by that share of each list's last distance.
// Fault 9 for an entry that the frame doesn't hold, fault 6 for a distance or a depth that doesn't fit a
// byte.
void Points3D(Run& run, Points3DState& state, const Fix& fix, const Frame3DLists& lists,
              std::string& csvBuffer);

}  // namespace sondrix
