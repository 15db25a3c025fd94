#include "survey/clean_repeats.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace sondrix {
namespace {

bool IsBefore(const Sounding& a, const Sounding& b) {
  if (a.time != b.time) return a.time < b.time;
  if (a.longitude != b.longitude) return a.longitude < b.longitude;
  if (a.latitude != b.latitude) return a.latitude < b.latitude;
  return a.recorded < b.recorded;
}

bool CanRepeat(const Sounding& sounding) { return sounding.fate == Fate::Used && sounding.HasTime(); }

bool AreTimesInOrder(const SoundingList& soundings) {
  double latest = -std::numeric_limits<double>::infinity();
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (!CanRepeat(sounding)) continue;
      if (sounding.time < latest) return false;
      latest = sounding.time;
    }
  }
  return true;
}

// Marks the repeats among soundings of which no two others can be equal; order holds their indexes and is
// sorted.
void MarkAmong(SoundingList& soundings, std::vector<std::uint32_t>& order) {
  if (order.size() < 2) return;
  std::sort(order.begin(), order.end(), [&soundings](std::uint32_t a, std::uint32_t b) {
    const Sounding &left = soundings[a], &right = soundings[b];
    if (IsBefore(left, right)) return true;
    return !IsBefore(right, left) && a < b;
  });
  std::size_t kept = 0;
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (IsBefore(soundings[order[kept]], soundings[order[i]])) {
      kept = i;
    } else {
      soundings[order[i]].fate = Fate::Repeat;
    }
  }
}

}  // namespace

void MarkRepeats(SoundingList& soundings) {
  // Where times are in order only soundings of the same time, which follow one another, have to be compared.
  const bool isInOrder = AreTimesInOrder(soundings);
  std::vector<std::uint32_t> order;
  if (!isInOrder) order.reserve(soundings.size());
  double time = Unknown;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    if (!CanRepeat(soundings[i])) continue;
    if (isInOrder && soundings[i].time != time) {
      MarkAmong(soundings, order);
      order.clear();
      time = soundings[i].time;
    }
    order.push_back(static_cast<std::uint32_t>(i));
  }
  MarkAmong(soundings, order);
}

}  // namespace sondrix
