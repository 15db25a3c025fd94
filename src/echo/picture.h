#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// A colour as 0xBBGGRR.
using Colour = std::uint32_t;
inline constexpr Colour Black = 0x000000;
inline constexpr Colour Red = 0x0000FF;
inline constexpr Colour Blue = 0xFF0000;
inline constexpr Colour White = 0xFFFFFF;
inline constexpr Colour Grey = 0xC8C8C8;

// A colour as a pixel of a raster: 0xFF in the top byte.
constexpr std::uint32_t PixelOf(Colour colour) { return 0xFF000000 | (colour & 0xFFFFFF); }

// A text on a picture: its top left corner in device pixels.
struct PictureText {
  float x = 0;
  float y = 0;
  std::string text;
  Colour colour = Black;
};

// A canvas with a logical size of its own on a raster of device pixels. Logical (0, 0) is the top left
// corner, and a logical point falls on the device pixel at floor(x * Width() / ScaleWidth()), y alike.
// Drawing is clipped at the edges; a coordinate that is no finite number draws nothing.
//
// Texts aren't part of the raster: they are kept beside it, so that whoever shows the picture paints them in
// its own font.
class Picture {
 public:
  // A white raster whose logical size is its device size. Sizes of at least 1 pixel. Texts that begin on it
  // end textMargin pixels before its right edge, as far as there is room.
  Picture(int width, int height, int textMargin = 0);

  int Width() const { return width_; }    // device pixels
  int Height() const { return height_; }  // device pixels
  float ScaleWidth() const { return scaleWidth_; }
  float ScaleHeight() const { return scaleHeight_; }

  // Device row y from its leftmost pixel on; in memory a pixel is R, G, B, 255 on a little-endian machine. A
  // pointer holds until the next call of a non-const member.
  const std::uint32_t* Row(int y) const { return pixels_.data() + RowStart(y); }
  std::uint32_t* Row(int y) { return pixels_.data() + RowStart(y); }
  int Stride() const { return stride_; }  // pixels from a row to the next one
  Colour At(int x, int y) const { return Row(y)[x] & 0xFFFFFF; }

  const std::vector<PictureText>& Texts() const { return texts_; }
  void ClearTexts();

  // Grows with everything that changes what is seen.
  std::uint64_t Version() const { return version_; }
  void Touch() { ++version_; }

  // The device pixel of a logical coordinate; one outside the raster gives -1 or the size.
  int DeviceX(double x) const;
  int DeviceY(double y) const;
  // How many device pixels a dot is high: 1, and more on a raster that was enlarged.
  int DotHeight() const { return dotHeight_; }
  // Where a text at x is painted so that it ends on the picture: device pixels. pixel: a pixel of the margin.
  double TextX(double x, double textWidth, double pixel) const;

  void Clear();
  // Leaves the texts.
  void ClearRaster();
  void SetScale(float width, float height);
  // Sizes that aren't above 0 leave the scale as it is.
  void SetScaleWidth(float width);
  void SetScaleHeight(float height);
  void DrawLine(double x1, double y1, double x2, double y2, Colour colour);
  void DrawDot(double x, double y, Colour colour);
  // radius in logical x units; round on the device.
  void DrawCircle(double x, double y, double radius, Colour colour);
  void PrintAt(double x, double y, std::string_view text, Colour colour = Black);
  // A blank in the place of the sign of a positive number, and a blank behind the number.
  void PrintAt(double x, double y, float value, Colour colour = Black);
  void PrintAt(double x, double y, int value, Colour colour = Black);
  // Moves raster and texts one device pixel to the left; the freed column at the right is white.
  void ScrollLeft();

  // Another device size: the rows are stretched. Of the columns the right ones stay as they are, with white
  // to their left, or they are stretched as well.
  enum class Columns { Keep, Stretch };
  void Resize(int width, int height, Columns columns = Columns::Stretch);

 private:
  std::size_t RowStart(int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(stride_) +
           static_cast<std::size_t>(offset_);
  }
  void SetPixel(double x, double y, std::uint32_t pixel);
  void PlaceText(double x, double y, std::string_view text, Colour colour);

  int width_;
  int height_;
  int nominalHeight_;
  int textMargin_;
  int dotHeight_ = 1;
  // The raster is a window on rows that are wider than it: scrolling moves the window to the right, and only
  // at the rows' end the pixels are moved back to their start.
  int stride_;
  int offset_ = 0;
  float scaleWidth_;
  float scaleHeight_;
  std::uint64_t version_ = 0;
  std::vector<std::uint32_t> pixels_;
  std::vector<PictureText> texts_;
  std::string numberText_;
};

// A line that is drawn on SMPL when somebody looks.
struct PendingLine {
  float x1, y1, x2, y2;
  Colour colour;
};

// What belongs on the raster of SMPL; its texts are placed at once.
struct PendingCurve {
  bool Waiting = false;               // the raster doesn't show this yet
  std::vector<std::uint8_t> Samples;  // of the frame; empty for a 3D frame
  std::vector<PendingLine> Lines;     // in the order of drawing, after the curve
};

// Which sample a device row of an echogram column shows, and in which colour.
struct ColumnTable {
  std::size_t sampleCount = 0;
  int height = 0;
  float scaleHeight = 0;
  std::vector<std::int32_t> sampleOfRow;  // -1: none, the background stays
  int contrast = 0;
  bool hasColours = false;
  std::array<std::uint32_t, 256> pixelOfSample{};
};

// The pictures of the window. SMPL holds what is seen only after Refresh (views.h).
struct Pictures {
  Picture ECHO{227, 420};     // the echogram: one column per frame, the newest at the right
  Picture SMPL{152, 420, 4};  // the curve of the last frame
  Picture METR{26, 420};      // the depth scale
  Picture CRS{40, 40};        // needle of the course
  Picture HED{40, 40};        // needle of the heading
  Picture BMP{402, 420};      // the first three side by side; never shown
  float LastScale = 0;        // metres; the scale that METR shows
  PendingCurve Curve;
  ColumnTable Column;
};

}  // namespace sondrix
