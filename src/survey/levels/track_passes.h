#pragma once

#include "survey/survey.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace sondrix {

// A track's way through a cell: the used soundings of a trip from first to last.
struct TrackPass {
  std::uint64_t cell = 0;
  std::uint32_t trip = 0;
  std::uint32_t first = 0, last = 0;
};

// Cells of a given size on the globe, in rows of latitude. A cell's neighbour to the east is the next number;
// those to the north are found by its place, since rows are shifted against each other every half degree,
// where the cells' width is set anew.
class CellRows {
 public:
  explicit CellRows(double size);  // metres

  std::uint64_t CellAt(double longitude, double latitude) const;
  static std::uint64_t Moved(std::uint64_t cell, std::int32_t east, std::int32_t north) {
    return Key(East(cell) + east, North(cell) + north);
  }

 private:
  static constexpr int Bands = 360;  // half degrees from pole to pole
  static std::uint64_t Key(std::int32_t east, std::int32_t north) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(north)) << 32) |
           static_cast<std::uint32_t>(east);
  }
  static std::int32_t East(std::uint64_t cell) { return static_cast<std::int32_t>(cell); }
  static std::int32_t North(std::uint64_t cell) { return static_cast<std::int32_t>(cell >> 32); }

  double north_;              // cells a degree
  std::vector<double> east_;  // by band
};

// The passes of all trips through cells of that size, by cell, trip and sounding. Longitudes are taken within
// half a turn of reference, so that a water across the date line is whole. 24 bytes a pass. Asks isToEnd now
// and then, and throws EndAsked.
std::vector<TrackPass> TrackPasses(const Survey& survey, const CellRows& cells, double reference, int threads,
                                   const std::function<bool()>& isToEnd);

// A longitude within half a turn of reference, degrees.
double WrappedLongitude(double longitude, double reference);

}  // namespace sondrix
