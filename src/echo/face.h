#pragma once

#include "echo/picture.h"

#include <string_view>

namespace sondrix {

// Pixels of a target inside which a text may be painted.
struct TextFrame {
  int left, top, right, bottom;  // right and bottom lie outside
};

// Paints a text in the built-in face: capitals 7 pixels high, digits 4 wide, each pixel zoom by zoom. It has
// the digits, signs and the few letters that the pictures print; letters of either case look alike, and one
// that it lacks leaves a gap. Returns the text's width in pixels.
int PaintText(Picture& target, const TextFrame& frame, int x, int y, std::string_view utf8, Colour colour,
              int zoom);

// Paints the texts of a picture onto target, where the picture's top left corner lies at (left, top); nothing
// is painted outside the picture, and a text that begins on it ends on it, as far as there is room.
void PaintTexts(const Picture& picture, Picture& target, int left, int top, int zoom);

}  // namespace sondrix
