#include "survey/place_order.h"

#include "survey/sounding_probe.h"

#include <algorithm>
#include <utility>

namespace sondrix {
namespace {

constexpr double Beside = 0.5;  // degrees

// Degrees between two boxes along the axis where they are further apart, 0 where they meet.
double GapOf(const SoundingSpan& a, const SoundingSpan& b) {
  return std::max({0.0, a.west - b.east, b.west - a.east, a.south - b.north, b.south - a.north});
}

double LeastGap(const SoundingSpan& span, std::span<const SoundingSpan> others) {
  double least = 360;
  for (const SoundingSpan& other : others)
    if (other.count > 0) least = std::min(least, GapOf(span, other));
  return least;
}

}  // namespace

bool LiesBesideExchanged(const SoundingSpan& soundings, std::span<const SoundingSpan> others) {
  SoundingSpan exchanged = soundings;
  std::swap(exchanged.west, exchanged.south);
  std::swap(exchanged.east, exchanged.north);
  const double gap = LeastGap(exchanged, others);
  return soundings.count > 0 && gap <= Beside && gap < LeastGap(soundings, others);
}

}  // namespace sondrix
