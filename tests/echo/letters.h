#pragma once

#include "echo/picture.h"

#include <string>

namespace sondrix {

inline char LetterOf(Colour colour) {
  for (const auto& [letter, known] :
       {std::pair('#', Black), {'R', Red}, {'B', Blue}, {'.', White}, {'g', Grey}})
    if (known == colour) return letter;
  return '?';
}

// A part of a raster, a letter a pixel and a stroke behind every row.
inline std::string Letters(const Picture& picture, int left, int top, int width, int height) {
  std::string letters;
  for (int y = top; y < top + height; ++y) {
    for (int x = left; x < left + width; ++x) letters += LetterOf(picture.At(x, y));
    letters += '/';
  }
  return letters;
}

inline std::string Letters(const Picture& picture) {
  return Letters(picture, 0, 0, picture.Width(), picture.Height());
}

// A column from the top as counts of equal pixels: "12. 3B 5.".
inline std::string Runs(const Picture& picture, int x) {
  std::string runs;
  for (int y = 0, count = 1; y < picture.Height(); ++y, ++count) {
    if (y + 1 < picture.Height() && picture.At(x, y + 1) == picture.At(x, y)) continue;
    runs += (runs.empty() ? "" : " ") + std::to_string(count) + LetterOf(picture.At(x, y));
    count = 0;
  }
  return runs;
}

}  // namespace sondrix
