#pragma once

#include "chart/depth_model.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// The lines along which the soundings were taken.
struct TrackLines {
  std::vector<std::uint32_t> lineOf;  // by sounding, rising
  std::uint32_t count = 0;
  double step = 0;  // metres from one sounding to the next on half of the way; 0 where there are none
};

// Cuts where the source begins a line, at jumps, and where the boat turned off the course of the line so far;
// by geometry alone, since many sources have no times.
TrackLines CutLines(std::span<const PlaneSounding> soundings);

// Cuts lines on into stretches not longer than that, metres.
TrackLines CutStretches(std::span<const PlaneSounding> soundings, const TrackLines& lines, double longest);

// Metres from a line to the next one beside it, where they run side by side; where few do, what lies between
// soundings if they were spread evenly. 0 where all lie at one place.
double LineSpacing(std::span<const PlaneSounding> soundings, const TrackLines& lines);

}  // namespace sondrix
