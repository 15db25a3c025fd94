#include "echo/face.h"

#include <algorithm>
#include <array>

namespace sondrix {
namespace {

constexpr int GlyphHeight = 7;
constexpr int BlankWidth = 2;
constexpr int GapWidth = 1;

struct Glyph {
  char32_t letter;
  char32_t twin;  // drawn alike; 0 for none
  std::array<std::string_view, GlyphHeight> rows;
};

// clang-format off
constexpr Glyph Face[] = {
    {U'0', 0, {".##.", "#..#", "#..#", "#..#", "#..#", "#..#", ".##."}},
    {U'1', 0, {"..#.", ".##.", "..#.", "..#.", "..#.", "..#.", ".###"}},
    {U'2', 0, {".##.", "#..#", "...#", "..#.", ".#..", "#...", "####"}},
    {U'3', 0, {".##.", "#..#", "...#", ".##.", "...#", "#..#", ".##."}},
    {U'4', 0, {"..##", ".#.#", "#..#", "####", "...#", "...#", "...#"}},
    {U'5', 0, {"####", "#...", "###.", "...#", "...#", "#..#", ".##."}},
    {U'6', 0, {".##.", "#...", "###.", "#..#", "#..#", "#..#", ".##."}},
    {U'7', 0, {"####", "...#", "...#", "..#.", "..#.", ".#..", ".#.."}},
    {U'8', 0, {".##.", "#..#", "#..#", ".##.", "#..#", "#..#", ".##."}},
    {U'9', 0, {".##.", "#..#", "#..#", ".###", "...#", "...#", ".##."}},
    {U'-', 0, {"...", "...", "...", "###", "...", "...", "..."}},
    {U'+', 0, {"...", "...", ".#.", "###", ".#.", "...", "..."}},
    {U'.', 0, {".", ".", ".", ".", ".", ".", "#"}},
    {U',', 0, {"..", "..", "..", "..", "..", ".#", "#."}},
    {U'A', U'А', {".##.", "#..#", "#..#", "####", "#..#", "#..#", "#..#"}},
    {U'B', U'В', {"###.", "#..#", "#..#", "###.", "#..#", "#..#", "###."}},
    {U'C', U'С', {".##.", "#..#", "#...", "#...", "#...", "#..#", ".##."}},
    {U'D', 0, {"###.", "#..#", "#..#", "#..#", "#..#", "#..#", "###."}},
    {U'E', U'Е', {"####", "#...", "#...", "###.", "#...", "#...", "####"}},
    {U'G', 0, {".##.", "#..#", "#...", "#.##", "#..#", "#..#", ".###"}},
    {U'K', U'К', {"#..#", "#..#", "#.#.", "##..", "#.#.", "#..#", "#..#"}},
    {U'P', U'Р', {"###.", "#..#", "#..#", "###.", "#...", "#...", "#..."}},
    {U'R', 0, {"###.", "#..#", "#..#", "###.", "#.#.", "#..#", "#..#"}},
    {U'S', 0, {".###", "#...", "#...", ".##.", "...#", "...#", "###."}},
    {U'T', U'Т', {"#####", "..#..", "..#..", "..#..", "..#..", "..#..", "..#.."}},
    {U'U', 0, {"#..#", "#..#", "#..#", "#..#", "#..#", "#..#", ".##."}},
    {U'Д', 0, {"..##.", ".#.#.", ".#.#.", ".#.#.", ".#.#.", "#####", "#...#"}},
    {U'И', 0, {"#..#", "#..#", "#.##", "#.##", "##.#", "##.#", "#..#"}},
    {U'Ч', 0, {"#..#", "#..#", "#..#", ".###", "...#", "...#", "...#"}},
};
// clang-format on

// The next letter of a text as a capital; two bytes of UTF-8 are as far as the face reaches.
char32_t TakeLetter(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  char32_t letter = byte(0);
  std::size_t used = 1;
  if (letter >= 0xC0 && letter < 0xE0 && text.size() > 1) {
    letter = (letter & 0x1F) << 6 | (byte(1) & 0x3F);
    used = 2;
  }
  text.remove_prefix(used);
  if ((letter >= U'a' && letter <= U'z') || (letter >= U'а' && letter <= U'я')) letter -= 0x20;
  return letter;
}

const Glyph* GlyphOf(char32_t letter) {
  const auto* glyph = std::find_if(std::begin(Face), std::end(Face), [letter](const Glyph& candidate) {
    return candidate.letter == letter || (candidate.twin != 0 && candidate.twin == letter);
  });
  return glyph == std::end(Face) ? nullptr : glyph;
}

int WidthOf(const Glyph* glyph) { return glyph ? static_cast<int>(glyph->rows[0].size()) : BlankWidth; }

// Without the blanks behind it and the gap behind its last letter.
int TextWidth(std::string_view utf8) {
  utf8 = utf8.substr(0, utf8.find_last_not_of(' ') + 1);
  int width = 0;
  while (!utf8.empty()) width += WidthOf(GlyphOf(TakeLetter(utf8))) + GapWidth;
  return width - GapWidth;
}

void PaintGlyph(Picture& target, const TextFrame& frame, int x, int y, const Glyph& glyph, Colour colour,
                int zoom) {
  const int width = static_cast<int>(glyph.rows[0].size()) * zoom;
  const int top = std::max(y, frame.top), bottom = std::min(y + GlyphHeight * zoom, frame.bottom);
  const int left = std::max(x, frame.left), right = std::min(x + width, frame.right);
  for (int row = top; row < bottom; ++row) {
    const std::string_view dots = glyph.rows[static_cast<std::size_t>((row - y) / zoom)];
    for (int column = left; column < right; ++column)
      if (dots[static_cast<std::size_t>((column - x) / zoom)] == '#')
        target.Row(row)[column] = PixelOf(colour);
  }
}

}  // namespace

int PaintText(Picture& target, const TextFrame& frame, int x, int y, std::string_view utf8, Colour colour,
              int zoom) {
  const TextFrame inside = {std::max(frame.left, 0), std::max(frame.top, 0),
                            std::min(frame.right, target.Width()), std::min(frame.bottom, target.Height())};
  const int start = x;
  while (!utf8.empty()) {
    const Glyph* glyph = GlyphOf(TakeLetter(utf8));
    if (glyph) PaintGlyph(target, inside, x, y, *glyph, colour, zoom);
    x += (WidthOf(glyph) + GapWidth) * zoom;
  }
  target.Touch();
  return x - start;
}

void PaintTexts(const Picture& picture, Picture& target, int left, int top, int zoom) {
  const TextFrame frame = {left, top, left + picture.Width(), top + picture.Height()};
  for (const PictureText& text : picture.Texts()) {
    const double x = picture.TextX(static_cast<double>(text.x), TextWidth(text.text) * zoom, zoom);
    PaintText(target, frame, left + static_cast<int>(x), top + static_cast<int>(text.y), text.text,
              text.colour, zoom);
  }
}

}  // namespace sondrix
