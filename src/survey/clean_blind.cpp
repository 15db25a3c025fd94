#include "survey/clean_blind.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sondrix {
namespace {

constexpr float LargestHeld = 1;  // metres
constexpr std::uint64_t MinRun = 5;
constexpr float MinJump = 0.5F;  // metres, beyond the held depth's double

float SmallestUsed(const SoundingList& soundings) {
  float smallest = std::numeric_limits<float>::infinity();
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (sounding.fate == Fate::Used) smallest = std::fmin(smallest, sounding.recorded);
    }
  }
  return smallest;
}

bool IsHeld(const SoundingList& soundings, float smallest) {
  std::uint64_t changes = 0, jumps = 0, run = 0, longestRun = 0;
  float before = Sounding{}.recorded;
  bool isFirst = true;
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (sounding.fate != Fate::Used) continue;
      const bool isSmallest = sounding.recorded == smallest;
      if (!isFirst && isSmallest != (before == smallest)) {
        ++changes;
        if (std::abs(sounding.recorded - before) > smallest + MinJump) ++jumps;
      }
      run = isSmallest ? run + 1 : 0;
      longestRun = std::max(longestRun, run);
      before = sounding.recorded;
      isFirst = false;
    }
  }
  return longestRun >= MinRun && changes > 0 && jumps * 5 >= changes * 4;
}

}  // namespace

void MarkWithoutDepth(SoundingList& soundings) {
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (Sounding& sounding : soundings.Block(b)) {
      if (sounding.fate == Fate::Used && !(sounding.recorded > 0 && std::isfinite(sounding.recorded))) {
        sounding.fate = Fate::Blind;
      }
    }
  }
}

void MarkHeldSmallest(SoundingList& soundings) {
  const float smallest = SmallestUsed(soundings);
  if (smallest > LargestHeld || !IsHeld(soundings, smallest)) return;
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (Sounding& sounding : soundings.Block(b)) {
      if (sounding.fate == Fate::Used && sounding.recorded == smallest) sounding.fate = Fate::Blind;
    }
  }
}

}  // namespace sondrix
