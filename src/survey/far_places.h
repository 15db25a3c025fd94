#pragma once

#include "survey/survey.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace sondrix {

// What a trip has far from the rest.
struct FarSoundings {
  std::size_t trip = 0;
  std::uint64_t count = 0;
  bool isAll = false;   // of its soundings used
  double distance = 0;  // metres from the rest, to some 15 km
};

// Finds the soundings used that lie by themselves: by a fix that was wrong for a while, or in another water.
// Those less than 15 km apart belong together, those more than 52 km apart don't unless others lie between.
// What belongs to most of them is kept, and what has more than half as many.
class FarPlaces {
 public:
  explicit FarPlaces(const Survey& survey);
  // Of a sounding used.
  bool Hold(const Sounding& sounding) const { return !trips_.empty() && cells_.at(KeyOf(sounding)).isFar; }
  const std::vector<FarSoundings>& Trips() const { return trips_; }  // by trip; empty: nothing is far

 private:
  using Key = std::uint32_t;
  struct Cell {
    Key key = 0;
    std::uint64_t count = 0;
    std::size_t group = 0;  // counted from 1; 0: of none yet
    bool isFar = false;
    double distance = 0;  // metres from the nearest cell that isn't far
  };

  static Key KeyOf(const Sounding& sounding);
  void CountCells(const Survey& survey);
  std::vector<std::uint64_t> Group();  // returns how many each group holds
  void MeasureDistances();
  void CountTrips(const Survey& survey);

  std::unordered_map<Key, Cell> cells_;
  std::vector<Key> order_;  // of their first soundings
  std::vector<FarSoundings> trips_;
};

}  // namespace sondrix
