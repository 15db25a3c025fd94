#pragma once

#include "core/sounding_list.h"

#include <cstdint>
#include <vector>

namespace sondrix {

// A stretch of track as the rules on depths see it: the soundings that are used so far, of one line and in
// order. A line longer than MaxSize is cut, so that a section's memory stays bounded.
struct TrackSection {
  static constexpr std::size_t MaxSize = std::size_t{1} << 18;
  static constexpr std::size_t NoiseBlock = 32;  // soundings that share a noise

  std::vector<std::uint32_t> index;  // into the trip's soundings
  std::vector<double> way;           // metres along the line; never falls
  std::vector<float> depth;          // metres, as recorded
  std::vector<Fate> fate;            // Used, Spike or Lost
  std::vector<float> noise;          // of each NoiseBlock, metres (clean_spikes.h)
  std::uint32_t line = 0;            // counts the trip's lines

  std::size_t size() const { return index.size(); }
  float NoiseAt(std::size_t i) const { return noise[i / NoiseBlock]; }
  // Writes what was found into the trip's soundings.
  void TellFates(SoundingList& soundings) const;
};

// Metres between two near places, as MetresBetween.
double WayBetween(const Sounding& from, const Sounding& to);

// Goes through a trip, section by section.
class SectionReader {
 public:
  explicit SectionReader(const SoundingList& soundings) : soundings_(&soundings) {}
  // Gives the next section with its way, or false behind the last one. Many recorders give several soundings
  // the place of one fix: their way is spread evenly to the next place, since the boat went on meanwhile.
  bool Next(TrackSection& section);

 private:
  const SoundingList* soundings_;
  std::size_t next_ = 0;
  std::uint32_t line_ = 0;
};

}  // namespace sondrix
