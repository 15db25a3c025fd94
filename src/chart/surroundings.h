#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// For each node of a grid how far the middle of the nodes marked within a square around it lies from it, in
// nodes: about 0 between soundings, large beyond the last of them. The square reaches so many nodes to each
// side; where nothing in it is marked, that reach.
std::vector<float> OffMiddle(int columns, int rows, std::span<const std::uint8_t> marked, int reach,
                             int threads);

// The mean of the values in such a square around each node, in place; what lies out of the grid doesn't
// count.
void MeanAround(int columns, int rows, std::vector<float>& values, int reach, int threads);

}  // namespace sondrix
