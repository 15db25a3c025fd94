#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// For each node of a grid the distance to the nearest of the nodes marked, in nodes; exact (Felzenszwalb and
// Huttenlocher, 2012, Theory of Computing 8, 415-428). Where none is marked, very large.
std::vector<float> DistanceField(int columns, int rows, std::span<const std::uint8_t> marked, int threads);

}  // namespace sondrix
