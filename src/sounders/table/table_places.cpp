#include "sounders/table/table_places.h"

#include "geo/near_places.h"

#include <utility>

namespace sondrix {
namespace {

constexpr double MaxSeconds = 10, MaxMetres = 30;

bool IsNear(const Sounding& a, const Sounding& b) {
  return b.time >= a.time && b.time - a.time <= MaxSeconds &&
         MetresBetween(a.longitude, a.latitude, b.longitude, b.latitude) <= MaxMetres;
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
      sounding.longitude = KeptDegrees(LongitudeBetween(before->longitude, after->longitude, part));
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
