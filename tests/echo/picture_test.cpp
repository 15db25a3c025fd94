#include "echo/picture.h"

#include "echo/face.h"
#include "echo/letters.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace sondrix {
namespace {

TEST(Picture, DrawsInItsLogicalScale) {
  Picture picture(8, 6);
  picture.SetScale(16, 60);
  picture.SetScaleWidth(0);
  picture.DrawLine(0, 0, 15, 0, Black);
  picture.DrawLine(0, 59, 15, 15, Red);
  picture.DrawDot(14, 29.9, Blue);
  EXPECT_EQ(Letters(picture), "########/.......R/.....RRB/...RR.../.RR...../R......./");
  EXPECT_EQ(picture.DeviceX(-0.1), -1);
  EXPECT_EQ(picture.DeviceY(60), 6);
}

TEST(Picture, ClipsWithoutBendingLines) {
  Picture near(8, 8), far(8, 8);
  near.DrawLine(0, 0, 7, 7, Black);
  far.DrawLine(-1e9, -1e9, 1e9, 1e9, Black);
  EXPECT_EQ(Letters(far), Letters(near));
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
  EXPECT_TRUE(Letters(far).find('#') == std::string::npos && far.Texts().empty());
  far.DrawCircle(-1e6, 4, 1e6 + 3, Black);  // its right edge only
  EXPECT_EQ(Runs(far, 3), "8#");
}

TEST(Picture, ScrollsBeyondItsBuffer) {
  Picture picture(5, 2);
  const Colour colours[] = {Black, Red, Blue, White};
  std::string top = ".....";
  for (int step = 0; step < 47; ++step) {
    picture.ScrollLeft();
    picture.DrawDot(4, 0, colours[step % 4]);
    top = top.substr(1) + LetterOf(colours[step % 4]);
    ASSERT_EQ(Letters(picture), top + "/...../") << step;
  }
  picture.PrintAt(3, 1, "x");
  picture.ScrollLeft();
  EXPECT_EQ(picture.Texts().at(0).x, 2);
}

TEST(Picture, ResizesItsContent) {
  Picture echo(4, 2), curve(4, 2);
  for (Picture* picture : {&echo, &curve}) {
    picture->DrawLine(3, 0, 3, 1, Black);
    picture->DrawDot(2, 1, Red);
    picture->PrintAt(2, 1, "x");
  }
  echo.Resize(6, 4, Picture::Columns::Keep);
  curve.Resize(8, 4);
  EXPECT_EQ(Letters(echo), ".....#/.....#/....R#/....R#/");
  EXPECT_EQ(Letters(curve), "......##/......##/....RR##/....RR##/");
  EXPECT_TRUE(echo.Texts().at(0).x == 4 && curve.Texts().at(0).x == 4 && curve.Texts().at(0).y == 2);
  echo.DrawDot(0, 1, Blue);  // twice as high as at first
  EXPECT_EQ(Runs(echo, 0), "1. 2B 1.");
  echo.Resize(2, 2, Picture::Columns::Keep);
  EXPECT_EQ(Letters(echo), ".#/R#/");
  Picture odd(2, 2);
  odd.DrawDot(1, 0, Black);
  odd.ScrollLeft();
  odd.DrawDot(1, 0, Red);
  odd.Resize(2, 5, Picture::Columns::Keep);
  EXPECT_EQ(Letters(odd), "#R/#R/#R/../../");
  odd.DrawDot(0, 1.9, Blue);  // no row of a column stays free
  EXPECT_EQ(Runs(odd, 0), "2# 3B");
}

TEST(Face, PaintsInsideThePicture) {
  Picture target(16, 8);
  const TextFrame all = {0, 0, 16, 8};
  EXPECT_EQ(PaintText(target, all, 0, 0, "Датчик", Black, 1), 32);
  EXPECT_EQ(PaintText(target, all, -9, -3, "GPS\xD0", Black, 2), 36);
}

}  // namespace
}  // namespace sondrix
