#include "survey/clean_position.h"

#include "survey/track_section.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace sondrix {
namespace {

constexpr double MaxSpeed = 30;   // m/s
constexpr double Scatter = 10;    // metres
constexpr double BreakCost = 60;  // seconds
constexpr std::size_t MaxPartsBack = 50;
constexpr double MinGap = 50;  // metres
constexpr double StepsOfGap = 10;
constexpr double MaxPause = 600;  // seconds
constexpr std::size_t StepSample = 4096;

bool IsSamePlace(const Sounding& a, const Sounding& b) {
  return a.longitude == b.longitude && a.latitude == b.latitude;
}

// Of two soundings in their order.
bool IsTooFast(const Sounding& from, const Sounding& to) {
  const double seconds = to.time - from.time;
  if (!(seconds >= 0)) return false;
  return WayBetween(from, to) > MaxSpeed * seconds + Scatter;
}

// Soundings between two jumps.
struct Part {
  std::uint32_t first = 0, last = 0;
  std::uint32_t lastPlace = 0;  // the first sounding at the last place
  std::uint32_t before = 0;     // the part before it in the best chain that ends here; its own index: none
  double worth = 0;             // seconds of that chain
};

// Cut wherever the next place is out of reach.
std::vector<Part> PartsOf(const SoundingList& soundings) {
  std::vector<Part> parts;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    if (soundings[i].fate == Fate::NoPosition) continue;
    const auto at = static_cast<std::uint32_t>(i);
    if (!parts.empty()) {
      Part& part = parts.back();
      const Sounding& place = soundings[part.lastPlace];
      if (IsSamePlace(place, soundings[i])) {
        part.last = at;
        continue;
      }
      if (!IsTooFast(place, soundings[i])) {
        part.last = part.lastPlace = at;
        continue;
      }
    }
    parts.push_back({at, at, at, 0, 0});
  }
  return parts;
}

void LinkParts(const SoundingList& soundings, std::vector<Part>& parts) {
  constexpr double worthOfSounding = 1e-3;  // decides between parts of no length
  for (std::size_t i = 0; i < parts.size(); ++i) {
    Part& part = parts[i];
    const Sounding& first = soundings[part.first];
    const double seconds = soundings[part.last].time - first.time;
    const double own = (seconds > 0 ? seconds : 0) + worthOfSounding * (part.last - part.first + 1);
    part.before = static_cast<std::uint32_t>(i);
    part.worth = own;
    for (std::size_t back = 1; back <= std::min(i, MaxPartsBack); ++back) {
      const Part& other = parts[i - back];
      const double worth = other.worth + own - (IsTooFast(soundings[other.lastPlace], first) ? BreakCost : 0);
      if (worth > part.worth) {
        part.worth = worth;
        part.before = static_cast<std::uint32_t>(i - back);
      }
    }
  }
}

// The median of some of the steps between places, metres.
double UsualStep(const SoundingList& soundings) {
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / StepSample);
  std::vector<double> steps;
  steps.reserve(StepSample * 2);
  for (std::size_t i = stride; i < soundings.size(); i += stride) {
    // The next sounding at another place stands for the step.
    std::size_t j = i;
    while (j < soundings.size() && j < i + StepSample &&
           (soundings[j].fate == Fate::NoPosition || soundings[i - 1].fate == Fate::NoPosition ||
            IsSamePlace(soundings[i - 1], soundings[j]))) {
      if (soundings[i - 1].fate == Fate::NoPosition) break;
      ++j;
    }
    if (j >= soundings.size() || soundings[i - 1].fate == Fate::NoPosition || j == i + StepSample) continue;
    steps.push_back(WayBetween(soundings[i - 1], soundings[j]));
  }
  if (steps.empty()) return 0;
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle;
}

}  // namespace

void MarkWithoutPosition(SoundingList& soundings) {
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (Sounding& sounding : soundings.Block(b)) {
      const bool isPlace = std::abs(sounding.longitude) <= 180 && std::abs(sounding.latitude) <= 90 &&
                           (sounding.longitude != 0 || sounding.latitude != 0);
      sounding.fate = isPlace ? Fate::Used : Fate::NoPosition;
    }
  }
}

void MarkJumpsOfPlace(SoundingList& soundings) {
  std::vector<Part> parts = PartsOf(soundings);
  if (parts.size() < 2) return;
  LinkParts(soundings, parts);
  std::size_t kept = 0;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (parts[i].worth > parts[kept].worth) kept = i;
  }
  for (std::size_t i = parts.size(); i-- > 0;) {
    if (i == kept) {
      kept = parts[i].before;
      continue;
    }
    for (std::size_t s = parts[i].first; s <= parts[i].last; ++s) soundings[s].fate = Fate::NoPosition;
  }
}

void BeginLines(SoundingList& soundings) {
  const double gap = std::max(MinGap, StepsOfGap * UsualStep(soundings));
  const Sounding* before = nullptr;
  bool isPending = false;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    Sounding& sounding = soundings[i];
    isPending |= sounding.beginsLine;
    if (sounding.fate == Fate::NoPosition) continue;
    if (before != nullptr) {
      const double seconds = sounding.time - before->time;
      isPending |= std::abs(seconds) > MaxPause;
      isPending |= !IsSamePlace(*before, sounding) && WayBetween(*before, sounding) > gap;
    }
    sounding.beginsLine = isPending;
    isPending = false;
    before = &sounding;
  }
}

}  // namespace sondrix
