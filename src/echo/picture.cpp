#include "echo/picture.h"

#include "core/number_text.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr int ScrollWidths = 4;  // widths of a row that scrolls

// The index of the pixel at a device coordinate, -1 left of the raster and size right of it.
int PixelIndex(double device, int size) {
  if (!(device >= 0)) return -1;
  return device < size ? static_cast<int>(device) : size;
}

std::size_t Area(int width, int height) {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

}  // namespace

Picture::Picture(int width, int height, int textMargin)
    : width_(width),
      height_(height),
      nominalHeight_(height),
      textMargin_(textMargin),
      stride_(width),
      scaleWidth_(static_cast<float>(width)),
      scaleHeight_(static_cast<float>(height)),
      pixels_(Area(width, height), PixelOf(White)) {}

int Picture::DeviceX(double x) const { return PixelIndex(x * width_ / scaleWidth_, width_); }

int Picture::DeviceY(double y) const { return PixelIndex(y * height_ / scaleHeight_, height_); }

double Picture::TextX(double x, double textWidth, double pixel) const {
  if (x < 0 || x >= width_) return x;
  return std::max(0.0, std::min(x, width_ - textMargin_ * pixel - textWidth));
}

void Picture::ClearTexts() {
  if (!texts_.empty()) Touch();
  texts_.clear();
}

void Picture::Clear() {
  ClearRaster();
  texts_.clear();
}

void Picture::ClearRaster() {
  std::fill(pixels_.begin(), pixels_.end(), PixelOf(White));
  offset_ = 0;
  Touch();
}

void Picture::SetScale(float width, float height) {
  SetScaleWidth(width);
  SetScaleHeight(height);
}

void Picture::SetScaleWidth(float width) {
  if (width > 0 && std::isfinite(width)) scaleWidth_ = width;
}

void Picture::SetScaleHeight(float height) {
  if (height > 0 && std::isfinite(height)) scaleHeight_ = height;
}

void Picture::SetPixel(double x, double y, std::uint32_t pixel) {
  if (x >= 0 && x < width_ && y >= 0 && y < height_) Row(static_cast<int>(y))[static_cast<int>(x)] = pixel;
}

void Picture::DrawLine(double x1, double y1, double x2, double y2, Colour colour) {
  double ax = std::floor(x1 * width_ / scaleWidth_);
  double ay = std::floor(y1 * height_ / scaleHeight_);
  double bx = std::floor(x2 * width_ / scaleWidth_);
  double by = std::floor(y2 * height_ / scaleHeight_);
  if (!std::isfinite(ax) || !std::isfinite(ay) || !std::isfinite(bx) || !std::isfinite(by)) return;
  const bool steep = std::abs(by - ay) > std::abs(bx - ax);
  if (steep) {
    std::swap(ax, ay);
    std::swap(bx, by);
  }
  if (ax > bx) {
    std::swap(ax, bx);
    std::swap(ay, by);
  }
  // One pixel per step of the longer axis, reckoned from the line's true ends, so that clipping doesn't bend
  // it.
  const int size = steep ? height_ : width_;
  const int across = steep ? width_ : height_;
  if (bx < 0 || ax >= size || std::max(ay, by) < 0 || std::min(ay, by) >= across) return;
  const int first = static_cast<int>(std::max(ax, 0.0));
  const int last = static_cast<int>(std::min(bx, size - 1.0));
  const std::uint32_t pixel = PixelOf(colour);
  Touch();
  if (!steep && ay == by) {
    std::fill(Row(static_cast<int>(ay)) + first, Row(static_cast<int>(ay)) + last + 1, pixel);
    return;
  }
  const double slope = bx > ax ? (by - ay) / (bx - ax) : 0;
  for (int step = first; step <= last; ++step) {
    const double other = std::floor(ay + (step - ax) * slope + 0.5);
    if (steep) {
      SetPixel(other, step, pixel);
    } else {
      SetPixel(step, other, pixel);
    }
  }
}

void Picture::DrawDot(double x, double y, Colour colour) {
  const int column = DeviceX(x);
  const int row = DeviceY(y);
  if (column < 0 || column >= width_ || row < 0 || row >= height_) return;
  Touch();
  for (int up = 0; up < dotHeight_ && up <= row; ++up) Row(row - up)[column] = PixelOf(colour);
}

void Picture::DrawCircle(double x, double y, double radius, Colour colour) {
  const double cx = std::floor(x * width_ / scaleWidth_);
  const double cy = std::floor(y * height_ / scaleHeight_);
  const double r = std::round(std::abs(radius) * width_ / scaleWidth_);
  if (!std::isfinite(cx) || !std::isfinite(cy) || !std::isfinite(r)) return;
  const std::uint32_t pixel = PixelOf(colour);
  const double eighth = std::floor(r * std::sqrt(0.5));
  Touch();
  // The flat arcs column by column, the steep ones row by row, each only where the raster is.
  const auto arcs = [&](double centre, double otherCentre, int size, bool columns) {
    const double first = std::max(centre - eighth, 0.0);
    const double last = std::min(centre + eighth, size - 1.0);
    for (double at = first; at <= last; at += 1) {
      const double reach = std::round(std::sqrt(r * r - (at - centre) * (at - centre)));
      for (const double other : {otherCentre - reach, otherCentre + reach}) {
        if (columns) {
          SetPixel(at, other, pixel);
        } else {
          SetPixel(other, at, pixel);
        }
      }
    }
  };
  arcs(cx, cy, width_, true);
  arcs(cy, cx, height_, false);
}

void Picture::PlaceText(double x, double y, std::string_view text, Colour colour) {
  const double deviceX = x * width_ / scaleWidth_;
  const double deviceY = y * height_ / scaleHeight_;
  // Far outside there is nothing to see, whatever the font.
  const double far = 1e6;
  if (!(std::abs(deviceX) < far) || !(std::abs(deviceY) < far)) return;
  Touch();
  texts_.push_back({static_cast<float>(deviceX), static_cast<float>(deviceY), std::string(text), colour});
}

void Picture::PrintAt(double x, double y, std::string_view text, Colour colour) {
  PlaceText(x, y, text, colour);
}

void Picture::PrintAt(double x, double y, float value, Colour colour) {
  numberText_.clear();
  if (!(value < 0)) numberText_ += ' ';
  numberText_ += LocText(value);
  numberText_ += ' ';
  PlaceText(x, y, numberText_, colour);
}

void Picture::PrintAt(double x, double y, int value, Colour colour) {
  numberText_.clear();
  if (!(value < 0)) numberText_ += ' ';
  AppendWhole(numberText_, value);
  numberText_ += ' ';
  PlaceText(x, y, numberText_, colour);
}

void Picture::ScrollLeft() {
  if (offset_ + width_ == stride_) {
    // The first scroll widens the rows; later ones only move them back.
    const int wide = stride_ == width_ ? width_ * ScrollWidths : stride_;
    std::vector<std::uint32_t> moved;
    std::vector<std::uint32_t>& target = wide == stride_ ? pixels_ : moved;
    if (wide != stride_) moved.assign(Area(wide, height_), PixelOf(White));
    for (int y = 0; y < height_; ++y) {
      const auto to = static_cast<std::ptrdiff_t>(Area(wide, y));
      std::copy(Row(y), Row(y) + width_, target.begin() + to);
    }
    if (wide != stride_) pixels_.swap(moved);
    stride_ = wide;
    offset_ = 0;
  }
  ++offset_;
  std::uint32_t* freed = Row(0) + width_ - 1;
  for (int y = 0; y < height_; ++y) freed[Area(stride_, y)] = PixelOf(White);
  for (PictureText& text : texts_) text.x -= 1;
  Touch();
}

void Picture::Resize(int width, int height, Columns columns) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  if (width == width_ && height == height_) return;
  const bool stretch = columns == Columns::Stretch;
  std::vector<std::uint32_t> resized(Area(width, height), PixelOf(White));
  for (int y = 0; y < height; ++y) {
    const std::uint32_t* from = Row(static_cast<int>(static_cast<std::int64_t>(y) * height_ / height));
    std::uint32_t* to = resized.data() + Area(width, y);
    for (int x = stretch ? 0 : std::max(0, width - width_); x < width; ++x)
      to[x] = from[stretch ? static_cast<std::int64_t>(x) * width_ / width : x - width + width_];
  }
  for (PictureText& text : texts_) {
    text.x = stretch ? text.x * static_cast<float>(width) / static_cast<float>(width_)
                     : text.x + static_cast<float>(width - width_);
    text.y *= static_cast<float>(height) / static_cast<float>(height_);
  }
  pixels_.swap(resized);
  width_ = stride_ = width;
  height_ = height;
  offset_ = 0;
  dotHeight_ = std::max(1, (height + nominalHeight_ - 1) / nominalHeight_);
  Touch();
}

}  // namespace sondrix
