#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

// A 24-bit Windows BMP file of a raster: a pixel is 0xBBGGRR with a top byte that is left out, the rows lie
// stride pixels apart, the first one is the top. Width and height are at least 1, and the pixels reach to the
// end of the last row.
std::vector<std::uint8_t> BmpBytes(std::span<const std::uint32_t> pixels, int width, int height, int stride);

}  // namespace sondrix
