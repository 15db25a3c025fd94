#pragma once

#include "chart/depth_model.h"
#include "chart/grid.h"
#include "chart/shore.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// What a shore says of the plane. Closed lines are areas, all of them together: a lake's and its islands'.
class ShoreLines {
 public:
  // CantModel where it has neither lines nor areas, or lies nowhere near the soundings.
  ShoreLines(const Shore& shore, std::span<const PlaneSounding> soundings);

  // The box of the areas of water that hold soundings; empty where there are none.
  struct Box {
    double west = 0, south = 0, east = 0, north = 0;
    bool isEmpty = true;
    void Add(const PlanePoint& point);
    void Join(const Box& other);
  };
  const Box& Water() const { return water_; }

  // 1 for the cells that are water, 0 for land. What open lines part is water where soundings lie.
  std::vector<std::uint8_t> WaterCells(const GridShape& shape, std::span<const std::uint8_t> sounded) const;
  // Whether areas of water bound all of it, so that no reach is needed.
  bool Encloses() const { return areasAreWater_; }

  // Places on the shore, no further than that from each other.
  std::vector<PlanePoint> Places(const GridShape& shape, double distance) const;

 private:
  std::vector<std::vector<PlaneLine>> areas_;
  std::vector<PlaneLine> open_;
  bool areasAreWater_ = false;
  Box water_;
};

}  // namespace sondrix
