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
};

// Of a language; Russian for a number without a table, as the window is built.
const NoteTexts& NoteTextsOf(LangId id);

}  // namespace sondrix
