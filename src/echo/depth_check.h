#pragma once

#include "core/channel.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

struct Run;

// Rows are indices of a frame's samples: row 0 at the surface, the last row at ScaleM metres.

// What the check carries from frame to frame of a run.
struct DepthState {
  std::int32_t SounderRow = 0;  // row of the recorded depth
  std::int16_t OwnRow = 0;      // row of the own depth, 0 where none was found
  std::int16_t PrevOwnRow = 0;
  float PrevOwnDepth = 0;  // metres
  std::string Line{};      // the log line, kept for its memory
};

struct DepthFrame {
  std::span<const std::uint8_t> Samples{};
  Channel Selected = Channel::Primary;
  float DepthM = 0;  // recorded depth
  float ScaleM = 0;  // depth of the last row
  std::int32_t FrameCounter = 0;
  std::int64_t FilePosition = 0;
  std::int32_t DefectLevel = 1;  // centimetres
  std::string_view Progress{};   // the whole progress line of the frame
};

struct DepthResult {
  float OwnDepth = 0;    // metres, 2 decimals
  float DepthDelta = 0;  // own less recorded depth, metres, 2 decimals
};

// The row at and above which no echo counts: 30 rows above the recorded bottom of the frame before, but not
// above row 30 nor below row 200.
std::int32_t SearchTopOf(std::int32_t sounderRow);

// The row of the strongest echo below searchTop and above the last 100 rows; of equal ones the deepest, 0 if
// there is none.
std::int16_t StrongestRow(std::span<const std::uint8_t> samples, std::int32_t searchTop);

// The own depth after a change of more than 4 % of itself was slowed down; prevDepth is that of the frame
// before. Metres.
float LimitDepth(float ownDepth, float prevDepth);

// The two depths of a frame; search looks for the bottom in the samples, otherwise the row found last stands.
// Brings SounderRow and OwnRow up to date. Fault 6 where a row doesn't fit its width.
DepthResult CompareDepths(DepthState& state, const DepthFrame& frame, bool search);

// A difference that is shown beside the marks, and an echo that may be a fish.
bool IsDefect(const DepthFrame& frame, float depthDelta);
bool IsFish(const DepthState& state, float depthDelta);

// The check of a frame: compares the depths, marks them on the pictures, reports in the log line and, on
// channels that are compared, in badLog, and saves the picture if asked for. Faults as of the operating
// system.
void DepthCheck(Run& run, DepthState& state, const DepthFrame& frame, std::string& badLog);

}  // namespace sondrix
