#include "formats/bmp.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(Bmp, TwoByTwoOfAWiderRaster) {
  const std::uint32_t pixels[] = {0xFF0000FF, 0xFFFF0000, 7, 0xFF00FF00, 0xFF332211};
  const std::vector<std::uint8_t> expected = {
      'B', 'M', 70,  0,    0,    0,    0, 0, 0,    0,    54, 0, 0, 0,                     //
      40,  0,   0,   0,    2,    0,    0, 0, 2,    0,    0,  0, 1, 0, 24, 0, 0, 0, 0, 0,  //
      16,  0,   0,   0,    0xC4, 0x0E, 0, 0, 0xC4, 0x0E, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0,  //
      0,   255, 0,   0x33, 0x22, 0x11, 0, 0,   // bottom row: green, then blue 33, green 22, red 11
      0,   0,   255, 255,  0,    0,    0, 0};  // top row: red, blue
  EXPECT_EQ(BmpBytes(pixels, 2, 2, 3), expected);
  EXPECT_EQ(BmpBytes(pixels, 4, 1, 5).size(), 54U + 12) << "a row of whole words has no padding";
}

}  // namespace
}  // namespace sondrix
