#pragma once

#include "core/fault.h"
#include "core/messages.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "echo/views.h"
#include "ozi/ozi_link.h"
#include "test_window.h"

#include <string>
#include <vector>

namespace sondrix {

// What the steps of a frame use, without a job around them.
struct EchoRun {
  EchoRun() {
    messages.WordFish = " fish?";
    messages.WordOffset = "offset ";
    messages.WordDucer = "Ducer";
    messages.DucerLabelShift = -70;
    settings.MakeGraf = true;
    settings.UseDcm = false;
  }
  Settings settings;
  RunLimits limits;
  RunState state;
  Messages messages;
  Pictures pictures;
  OziLink link;
  TestWindow window;
  Run run{settings, limits, state, messages, pictures, link, window};
};

inline char LetterOf(Colour colour) {
  switch (colour) {
    case Black:
      return '#';
    case Red:
      return 'R';
    case Blue:
      return 'B';
    case White:
      return '.';
    case Grey:
      return 'g';
    default:
      return '?';
  }
}

// A part of a raster, a letter a pixel.
inline std::vector<std::string> Letters(const Picture& picture, int left, int top, int width, int height) {
  std::vector<std::string> rows;
  for (int y = top; y < top + height; ++y) {
    rows.emplace_back();
    for (int x = left; x < left + width; ++x) rows.back() += LetterOf(picture.At(x, y));
  }
  return rows;
}

inline std::vector<std::string> Letters(const Picture& picture) {
  return Letters(picture, 0, 0, picture.Width(), picture.Height());
}

// A column from the top as counts of equal pixels: "12. 3B 5.".
inline std::string Runs(const Picture& picture, int x) {
  std::string runs;
  for (int y = 0, count = 0; y < picture.Height(); ++y) {
    ++count;
    if (y + 1 < picture.Height() && picture.At(x, y + 1) == picture.At(x, y)) continue;
    runs += (runs.empty() ? "" : " ") + std::to_string(count) + LetterOf(picture.At(x, y));
    count = 0;
  }
  return runs;
}

inline int FaultIn(auto&& action) {
  try {
    action();
  } catch (const Fault& fault) {
    return fault.Number();
  }
  return 0;
}

}  // namespace sondrix
