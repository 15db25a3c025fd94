#pragma once

#include "core/sounding_list.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// What a list of soundings spans. Of those alone that have a place and a depth above 0.
struct SoundingSpan {
  std::size_t count = 0;
  double west = Unknown, east = Unknown, south = Unknown, north = Unknown;  // degrees
  double from = Unknown, to = Unknown;  // seconds since 1970; not a number unless nine of ten have a time
  double depthUnit = 0.001;             // metres, of which all depths are multiples: 0.1, 0.01 or 0.001

  bool HasTimes() const { return from <= to; }
};
SoundingSpan SpanOf(const SoundingList& soundings);

// Where and when a sounding may stand in another list.
struct ProbeReach {
  bool usesTime = false;  // within a second
  double shift = 0;       // seconds that the times of the other list are ahead
  double metres = 1;
  double back = 0;  // metres: the way before a sounding of the other list on which it may stand as well
};

// Soundings spread evenly over a list, to be looked for in others: memory and pace don't depend on the length
// of the list, and a look at another takes one pass over it.
class SoundingProbe {
 public:
  SoundingProbe(const SoundingList& soundings, const SoundingSpan& span);

  // Whether nearly all of them stand in another list: within reach of each lies one whose depth is the same
  // but for rounding, and more often than a stranger's would be, of which every depth within some centimetres
  // is as likely as any other; or nearly all stand there to the millisecond and the last digit of the place.
  bool StandsIn(const SoundingList& other, const SoundingSpan& otherSpan, const ProbeReach& reach);

  // Where nearly all stand in others together to the millisecond and the last digit: the indices of those
  // that have some. Else none.
  std::vector<std::size_t> StandsAmong(std::span<const SoundingList* const> others);

 private:
  struct Row {
    double longitude, latitude, time;
    float depth;
    bool isHit, isExact, isIndexed;
    std::uint64_t near;  // by depth from the row's: what the other list has within reach
  };
  struct Entry {
    std::int64_t key;
    std::uint32_t row, next;
  };

  // How many of the indexed rows another list has exactly. What it has within reach stands in them then.
  std::size_t Look(const SoundingList& other, const ProbeReach& reach, double tolerance);
  void Index(const ProbeReach& reach, std::size_t every);
  void Insert(std::int64_t key, std::uint32_t row);
  bool IsFull(std::int64_t key) const;
  std::int64_t KeyOf(const ProbeReach& reach, double longitude, double latitude, double time) const;
  // Metres of a row from a sounding, or from the way back to where the boat was before.
  double DistanceOf(const Row& row, const Sounding& sounding, const Sounding& before, double back) const;
  // Whether the row wasn't found exactly before.
  bool Meet(Row& row, const Sounding& sounding, const Sounding& before, const ProbeReach& reach,
            double tolerance) const;
  bool IsLikely() const;
  bool IsExact() const;
  bool IsAnswered(double tolerance) const;

  SoundingSpan span_;
  double metresEast_ = 0;  // of a degree
  std::vector<Row> rows_;
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> heads_;
};

}  // namespace sondrix
