#pragma once

#include "chart/grid.h"

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// The one surface that contours and depth areas are drawn of. It is nowhere deeper than the model, by no more
// than its uncertainty shallower, but where a small hollow was filled.
//
// Its nodes are the middles of the cells. A square is what four neighbouring nodes enclose; the chart is the
// union of the squares whose four nodes have a depth, without those that would touch it at a corner only.
struct ContourSurface {
  GridShape shape;
  std::vector<double> depths;         // of the contours, metres, rising
  std::vector<float> depth;           // of each node, metres; not a number where the model has none
  std::vector<std::uint16_t> band;    // of each node: how many of the depths it reaches
  std::vector<std::uint8_t> squares;  // 1 in the chart; (columns + 1) * (rows + 1), those at the rim are 0

  // Of the square whose south-east corner is that node. The next one to the east is 1 further, to the south
  // SquareStride.
  std::size_t SquareIndex(int column, int row) const {
    return static_cast<std::size_t>(row) * SquareStride() + static_cast<std::size_t>(column);
  }
  std::size_t SquareStride() const { return static_cast<std::size_t>(shape.columns) + 1; }
  int SquaresAround(int column, int row) const {
    const std::size_t square = SquareIndex(column, row);
    return squares[square] + squares[square + 1] + squares[square + SquareStride()] +
           squares[square + SquareStride() + 1];
  }
  bool IsInside(int column, int row) const { return SquaresAround(column, row) == 4; }

  void SetDepth(std::size_t node, float value);  // and its band
};

// A crossing keeps this part of an edge's length between itself and either end, so that vertices stay apart
// when their coordinates are rounded in a file: a hundredth of a cell, and 5 mm at least.
double CrossingMargin(double cell);

// The depths are rising and at most 65534.
ContourSurface ContourSurfaceOf(const DepthModel& model, std::span<const double> depths);

// The largest float that is shallower than that depth.
float JustAbove(double depth);

}  // namespace sondrix
