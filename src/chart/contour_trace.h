#pragma once

#include "chart/contour_surface.h"

#include <cstdint>
#include <vector>

namespace sondrix {

// Where the contours cross the edges between nodes, and how the crossings are linked.
//
// Each square is parted into two triangles along the diagonal that makes the surface the shallower one, so
// that it is nowhere deeper than what four nodes mean by bilinear interpolation. On triangles a contour is
// exactly the straight piece between two crossings: contours of one surface can't cross or touch.
//
// Vertices are numbered row of nodes by row of nodes. In a row, from west to east: a node at the edge of the
// chart, the crossings between it and the next node, and so on; behind the row of nodes further south follow
// the crossings of the squares in between.
struct ContourTrace {
  static constexpr std::int32_t None = -1;

  std::vector<PlanePoint> at;
  std::vector<std::uint16_t> level;      // the contour's number from 1 on; 0: a node at the edge
  std::vector<std::int32_t> next;        // along the contour, deeper water on the left
  std::vector<std::int32_t> nextOnEdge;  // along the edge of the chart, the chart on the left
  std::vector<std::size_t> rowStart;     // the first vertex of each row of nodes
};

ContourTrace TraceContours(const ContourSurface& surface);

// A contour from end to end.
struct ContourPath {
  std::int32_t first = 0;
  std::int32_t last = 0;  // of a closed one the vertex before the first
  std::size_t count = 0;  // vertices
  std::uint16_t level = 0;
  bool isClosed = false;
};

// By level, then as their first vertices are numbered.
std::vector<ContourPath> PathsOf(const ContourTrace& trace);

}  // namespace sondrix
