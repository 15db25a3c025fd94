#pragma once

#include <cstddef>
#include <vector>

namespace sondrix {

// Metres in the chart's projection: x to the east, y to the north.
struct PlanePoint {
  double x = 0, y = 0;
};

// Where the cells of a grid lie. Rows run from north to south, columns from west to east; a value holds in
// the middle of its cell.
struct GridShape {
  double west = 0, north = 0;  // outer corner of the first cell
  double cell = 0;             // metres, both ways
  int columns = 0, rows = 0;

  std::size_t CellCount() const { return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows); }
  std::size_t IndexOf(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
           static_cast<std::size_t>(column);
  }
  PlanePoint MiddleOf(int column, int row) const {
    return {west + (column + 0.5) * cell, north - (row + 0.5) * cell};
  }
};

// The bed as the soundings tell it. Both rasters have a value for each cell, row by row from the north-west;
// where the chart doesn't go, both are not a number.
struct DepthModel {
  GridShape shape;
  std::vector<float> depth;        // metres, positive down
  std::vector<float> uncertainty;  // metres, one standard deviation
};

}  // namespace sondrix
