#pragma once

#include "app/language.h"

#include <string_view>

namespace sondrix {

// The notes on a source and on a run without points, as patterns of Filled.
struct NoteTexts {
  std::string_view noPoints;                // what every reason stands behind
  std::string_view channel;                 // of a number without a name: {0}
  std::string_view extension;               // {0} as it is, {1} as it has to be
  std::string_view nothingRead, stopped;    // nothing, or nothing yet
  std::string_view noFrame, noRow;          // of the channel {0}
  std::string_view noDepth;                 // of the channel {0}
  std::string_view depths;                  // of the channel {0} in {1} of {2} frames
  std::string_view from, to, fromTo;        // an interval
  std::string_view outside, before;         // interval {0}, indices {1} to {2}; interval {0}, first index {1}
  std::string_view noFrameInside;           // interval {0}, channel {1}
  std::string_view noDepthInside;           // the same
  std::string_view unfit;                   // frames of the channel {0}
  std::string_view fellToDistance;          // {0} soundings, limit {1}
  std::string_view fellToLimits;            // {0} soundings, limits {1} and {2}
  std::string_view fellTo3D;                // {0} soundings
  std::string_view noPlainRow, noTable3D;   // of a table
  std::string_view zeroDepths, noPosition;  // of all rows or soundings
  std::string_view noSounding, noFix;       // of a log
  std::string_view noContour;               // of a map
  // What a source holds. File {0}, size {1}, {2} frames.
  std::string_view echogram, sampledEchogram;
  std::string_view channelFrames;      // channel {0}, {1} frames, {2} with a depth, indices {3} to {4}
  std::string_view times, depthRange;  // {0} to {1}
  std::string_view exportTable, plainTable, log, map;
  std::string_view text, sampledText;  // file {0}, kind {1}, size {2}, {3} lines
  std::string_view channelRows;        // channel {0}, {1} rows, {2} with a depth
  std::string_view soundings;          // {0}
  std::string_view unreadable;         // file {0}
};

// Of a language; Russian for a number without a table, as the window is built.
const NoteTexts& NoteTextsOf(LangId id);

}  // namespace sondrix
