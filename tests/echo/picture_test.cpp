#include "echo/picture.h"

#include "digest.h"
#include "samples/xorshift.h"

#include <cmath>
#include <functional>
#include <limits>

namespace sondrix {
namespace {

std::string PixelsOf(const Picture& picture) {
  std::string pixels;
  for (int y = 0; y < picture.Height(); ++y)
    for (int x = 0; x < picture.Width(); ++x) pixels += std::to_string(picture.At(x, y)) + (x ? " " : "\n");
  return pixels;
}

// Lines, dots, circles and texts anywhere, between scrolls and new sizes and scales.
TEST(Picture, ScribblesAsItDid) {
  XorShift chance(9);
  const auto any = [&chance](int below) { return below * chance.Signed(); };
  std::ostringstream all;
  Picture picture(12, 9, 3);
  Colour colour = Black;
  double x = 0, y = 0, width = 0, height = 0;
  const std::function<void()> acts[] = {
      [&] { picture.SetScale(static_cast<float>(width), static_cast<float>(height)); },
      [&] {
        picture.Resize(int(width), int(height), x < 0 ? Picture::Columns::Keep : Picture::Columns::Stretch);
      },
      [&] { picture.DrawCircle(x, y, width / 3, colour); },
      [&] { picture.PrintAt(x, y, static_cast<float>(x), colour); },
      [&] { picture.PrintAt(x, y, static_cast<int>(y)); },
      [&] { x > 0 ? picture.DrawDot(x, y, colour) : picture.ScrollLeft(); },
      [&] { x > 40   ? picture.ClearRaster()
            : y > 40 ? picture.ClearTexts()
                     : picture.ScrollLeft(); },
      [&] { picture.DrawLine(x, y, width, chance.Below(3) ? height : y, colour); }};
  for (int step = 0; step < 3000; ++step) {
    const std::uint64_t version = picture.Version();
    colour = chance.Next();
    for (double* number : {&x, &y, &width, &height}) *number = any(50);
    acts[chance.Below(std::size(acts))]();
    // cppcheck-suppress knownConditionTrueFalse ; the act between may draw
    all << (picture.Version() != version) << picture.DotHeight() << picture.DeviceX(x) << ' '
        << picture.DeviceY(y) << ' ' << picture.TextX(x, width, 1.5) << '\n';
    if (step % 10) continue;
    all << PixelsOf(picture);
    for (const PictureText& text : picture.Texts())
      all << text.x << ' ' << text.y << text.text << text.colour << '\n';
  }
  EXPECT_TRUE(HasDigest(all.str(), 0x85360BC479446AB));
}

TEST(Picture, ClipsWithoutBendingLines) {
  Picture near(8, 8), far(8, 8), none(8, 8);
  near.DrawLine(0, 0, 7, 7, Black);
  far.DrawLine(-1e9, -1e9, 1e9, 1e9, Black);
  EXPECT_EQ(PixelsOf(far), PixelsOf(near));
  far.Clear();
  constexpr double huge = std::numeric_limits<double>::max();
  for (const double x : {-1e9, 1e18, huge, -huge, std::nan(""), HUGE_VAL}) {
    far.DrawDot(x, 2, Black);
    far.DrawDot(2, x, Black);
    far.DrawLine(x, -5, x, 5, Black);
    far.DrawLine(-3, x, 3, x, Black);
    far.DrawCircle(x, x, 3, Black);
    far.DrawCircle(4, 4, x, Black);
    far.PrintAt(x, 3, "1");
  }
  EXPECT_TRUE(PixelsOf(far) == PixelsOf(none) && far.Texts().empty());
  far.DrawCircle(-1e6, 4, 1e6 + 3, Black);  // its right edge only
  near.Clear();
  near.DrawLine(3, 0, 3, 7, Black);
  EXPECT_EQ(PixelsOf(far), PixelsOf(near));
}

}  // namespace
}  // namespace sondrix
