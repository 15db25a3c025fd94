#include "survey/survey.h"

#include <cmath>

namespace sondrix {

std::uint64_t Survey::SoundingCount() const {
  std::uint64_t count = 0;
  for (const Trip& trip : trips) count += trip.soundings.size();
  return count;
}

FateCounts CountFates(const SoundingList& soundings) {
  FateCounts counts{};
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) ++counts[static_cast<std::size_t>(sounding.fate)];
  }
  return counts;
}

TimeRange TimeRangeOf(const SoundingList& soundings) {
  TimeRange range;
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      range.from = std::fmin(range.from, sounding.time);
      range.to = std::fmax(range.to, sounding.time);
    }
  }
  return range;
}

}  // namespace sondrix
