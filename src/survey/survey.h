#pragma once

#include "core/sounding_list.h"
#include "sounders/common/reading.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// What one trip left behind: a recording, a log, a table, or one of the trips of a table that holds several.
struct Trip {
  std::string name;  // the source's file name, or what the source calls it
  std::string path;  // of the source
  std::string kind;  // of the source
  SoundingList soundings;
  std::uint32_t journey = 0;  // index of the first trip of which this is a later part; its own where of none
  std::uint32_t part = 0;     // of the journey, counted from 0
};

// The trips in the order of the sources.
struct Survey {
  std::vector<Trip> trips;

  std::uint64_t SoundingCount() const;
};

// By Fate.
using FateCounts = std::array<std::uint64_t, FateCount>;
FateCounts CountFates(const SoundingList& soundings);

// The first and the last time among the soundings, seconds since 1970 UTC; not a number where none has one.
struct TimeRange {
  double from = Unknown, to = Unknown;
};
TimeRange TimeRangeOf(const SoundingList& soundings);

}  // namespace sondrix
