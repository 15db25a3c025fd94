#include "formats/bmp.h"

namespace sondrix {
namespace {

constexpr std::uint32_t FileHeader = 14;
constexpr std::uint32_t InfoHeader = 40;
constexpr std::uint32_t PixelsPerMetre = 3780;  // 96 to the inch

void AppendWord(std::vector<std::uint8_t>& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

}  // namespace

std::vector<std::uint8_t> BmpBytes(std::span<const std::uint32_t> pixels, int width, int height, int stride) {
  const std::uint32_t rowBytes = (static_cast<std::uint32_t>(width) * 3 + 3) / 4 * 4;
  const std::uint32_t imageBytes = rowBytes * static_cast<std::uint32_t>(height);
  std::vector<std::uint8_t> out;
  out.reserve(FileHeader + InfoHeader + imageBytes);
  out.push_back('B');
  out.push_back('M');
  AppendWord(out, FileHeader + InfoHeader + imageBytes, 4);
  AppendWord(out, 0, 4);
  AppendWord(out, FileHeader + InfoHeader, 4);
  AppendWord(out, InfoHeader, 4);
  AppendWord(out, static_cast<std::uint32_t>(width), 4);
  AppendWord(out, static_cast<std::uint32_t>(height), 4);
  AppendWord(out, 1, 2);   // planes
  AppendWord(out, 24, 2);  // bits of a pixel
  AppendWord(out, 0, 4);   // no compression
  AppendWord(out, imageBytes, 4);
  AppendWord(out, PixelsPerMetre, 4);
  AppendWord(out, PixelsPerMetre, 4);
  AppendWord(out, 0, 4);  // no palette
  AppendWord(out, 0, 4);
  out.resize(FileHeader + InfoHeader + imageBytes);
  std::uint8_t* row = out.data() + FileHeader + InfoHeader;
  for (int y = height; y-- > 0; row += rowBytes) {  // the bottom row comes first
    const auto from = static_cast<std::size_t>(y) * static_cast<std::size_t>(stride);
    std::uint8_t* byte = row;
    for (const std::uint32_t pixel : pixels.subspan(from, static_cast<std::size_t>(width))) {
      *byte++ = static_cast<std::uint8_t>(pixel >> 16);
      *byte++ = static_cast<std::uint8_t>(pixel >> 8);
      *byte++ = static_cast<std::uint8_t>(pixel);
    }
  }
  return out;
}

}  // namespace sondrix
