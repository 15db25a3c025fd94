#include "core/outputs.h"
#include "echo/face.h"
#include "echo/views.h"
#include "formats/bmp.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

namespace sondrix {
namespace {

constexpr int StandardHeight = 420;  // of the panels, where a pixel of the face is one pixel

void Copy(const Picture& from, Picture& to, int left) {
  const int first = std::max(left, 0);
  const int last = std::min(left + from.Width(), to.Width());
  const int height = std::min(from.Height(), to.Height());
  for (int y = 0; y < height && first < last; ++y)
    std::copy(from.Row(y) + first - left, from.Row(y) + last - left, to.Row(y) + first);
}

}  // namespace

void ComposeGraph(Pictures& pictures) {
  Refresh(pictures);
  const Picture* panels[] = {&pictures.ECHO, &pictures.SMPL, &pictures.METR};
  // The panels overlap by one column each: the echogram's newest column lies on top, its oldest is left out.
  int lefts[std::size(panels)];
  int left = -1;
  int height = 0;
  for (std::size_t i = 0; i < std::size(panels); ++i) {
    lefts[i] = left;
    left += panels[i]->Width() - 1;
    height = std::max(height, panels[i]->Height());
  }
  Picture& bmp = pictures.BMP;
  bmp.Resize(left + 1, height);
  bmp.Clear();
  const int zoom = std::max(1, height / StandardHeight);
  for (const std::size_t i : {1U, 0U, 2U}) {
    Copy(*panels[i], bmp, lefts[i]);
    PaintTexts(*panels[i], bmp, lefts[i], 0, zoom);
  }
}

void SaveGraph(Pictures& pictures, Outputs& outputs, std::string_view path) {
  ComposeGraph(pictures);
  const Picture& bmp = pictures.BMP;
  const auto pixels = static_cast<std::size_t>(bmp.Stride()) * static_cast<std::size_t>(bmp.Height());
  const std::vector<std::uint8_t> bytes =
      BmpBytes({bmp.Row(0), pixels}, bmp.Width(), bmp.Height(), bmp.Stride());
  const std::string_view whole(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  outputs.Write(path, std::span(&whole, 1));
}

}  // namespace sondrix
