#include "sounders/table_places.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace sondrix {
namespace {

constexpr double MaxSeconds = 10, MaxMetres = 30;

// A degree of a meridian on a sphere of the earth's mean radius of 6371 km, metres.
constexpr double MetresOfDegree = 6371e3 * std::numbers::pi / 180;

bool IsNear(const Sounding& a, const Sounding& b) {
  const double north = (b.latitude - a.latitude) * MetresOfDegree;
  const double shrink = std::cos(a.latitude * std::numbers::pi / 180);
  const double east = std::remainder(b.longitude - a.longitude, 360) * MetresOfDegree * shrink;
  return b.time >= a.time && b.time - a.time <= MaxSeconds && std::hypot(north, east) <= MaxMetres;
}

void TakePlace(Sounding& sounding, const Sounding& fix) {
  sounding.longitude = fix.longitude;
  sounding.latitude = fix.latitude;
}

// The soundings between two fixes; before is null for those in front of the first one, after behind the last.
std::uint64_t PlaceBetween(SoundingList& soundings, std::size_t from, std::size_t to, const Sounding* before,
                           const Sounding* after) {
  std::uint64_t placed = 0;
  const bool isNear = before != nullptr && after != nullptr && IsNear(*before, *after);
  for (std::size_t i = from; i < to; ++i) {
    Sounding& sounding = soundings[i];
    if (!sounding.HasTime()) continue;
    if (before != nullptr && sounding.time == before->time) {
      TakePlace(sounding, *before);
    } else if (after != nullptr && sounding.time == after->time) {
      TakePlace(sounding, *after);
    } else if (isNear && sounding.time > before->time && sounding.time < after->time) {
      const double part = (sounding.time - before->time) / (after->time - before->time);
      const double east = std::remainder(after->longitude - before->longitude, 360);
      double longitude = before->longitude + part * east;
      if (longitude > 180) longitude -= 360;
      if (longitude < -180) longitude += 360;
      sounding.longitude = KeptDegrees(longitude);
      sounding.latitude = KeptDegrees(before->latitude + part * (after->latitude - before->latitude));
    } else {
      continue;
    }
    ++placed;
  }
  return placed;
}

}  // namespace

std::uint64_t PlaceByTime(SoundingList& soundings) {
  std::uint64_t placed = 0;
  const Sounding* before = nullptr;
  std::size_t from = 0;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const Sounding& sounding = soundings[i];
    if (!sounding.HasPosition() || !sounding.HasTime()) continue;
    if (from < i) placed += PlaceBetween(soundings, from, i, before, &sounding);
    before = &sounding;
    from = i + 1;
  }
  if (from < soundings.size() && before != nullptr)
    placed += PlaceBetween(soundings, from, soundings.size(), before, nullptr);
  return placed;
}

void SwapPlaces(SoundingList& soundings) {
  for (std::size_t block = 0; block < soundings.BlockCount(); ++block)
    for (Sounding& sounding : soundings.Block(block)) std::swap(sounding.longitude, sounding.latitude);
}

void TurnDepths(SoundingList& soundings) {
  for (std::size_t block = 0; block < soundings.BlockCount(); ++block) {
    for (Sounding& sounding : soundings.Block(block)) {
      // No zero with a sign.
      if (sounding.recorded != 0) sounding.recorded = -sounding.recorded;
      sounding.depth = sounding.recorded;
    }
  }
}

}  // namespace sondrix
