#include "echo/views.h"

#include "echo/letters.h"
#include "fault_in.h"
#include "test_run.h"

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

void Show(TestRun& e, const Samples& samples, float scaleM = 30, Channel channel = Channel::Downscan) {
  ShowFrame(e.pictures, channel, samples, ShownScale(channel, scaleM), 0, e.settings.EhoSens, 100, e.window);
}

TEST(Views, FramesScrollAndTheCurveWaits) {
  TestRun e;
  ResizeViews(e.pictures, 6, 8, 4, 4);
  PrepareViews(e.pictures, Channel::Downscan, 8);
  Show(e, {0, 0, 0, 255, 255, 0, 0, 0});
  MarkDepths(e.pictures, 3, 6);
  Show(e, {9, 255, 0, 255, 255, 255, 0, 255});
  EXPECT_EQ(Letters(e.pictures.ECHO), ".....#/....R./....##/....B./");
  e.settings.EhoSens = -1;
  Show(e, {0, 0, 0, 0, 0, 0, 255, 255});
  MarkDepths(e.pictures, 2, 2);
  EXPECT_EQ(Letters(e.pictures.ECHO), "....#./...R.B/...##./...B.#/");
  Refresh(e.pictures);
  EXPECT_EQ(Letters(e.pictures.SMPL), "B......./RRRRRRRR/BBBB..../....BBBB/");
  Show(e, Samples(8));
  Refresh(e.pictures);
  EXPECT_EQ(Letters(e.pictures.SMPL), "B......./B......./B......./B......./");
  // A raster twice as high as at first has dots of two rows; too high a contrast leaves nothing.
  ResizeViews(e.pictures, 6, 8, 4, 840);
  PrepareViews(e.pictures, Channel::Downscan, 420);
  Show(e, Samples(420, 255));
  EXPECT_EQ(Runs(e.pictures.ECHO, 5), "1. 838# 1.");
  e.settings.EhoSens = 50;
  Show(e, Samples(420, 49));
  EXPECT_EQ(Runs(e.pictures.ECHO, 5), "840.");
}

TEST(Views, DepthScale) {
  // The channel, metres; how many texts, metres between them, the last tick's row.
  const std::tuple<Channel, float, int, int, double> rows[] = {{Channel::Downscan, 30.48F, 15, 2, 1860},
                                                               {Channel::Sidescan, 30, 2, 10, 1280},
                                                               {Channel::Primary, 150, 14, 10, 1776},
                                                               {Channel::Downscan, 150.01F, 7, 2, 1792}};
  TestRun e;
  const Picture& metr = e.pictures.METR;
  for (const auto& [channel, scale, count, step, lastRow] : rows) {
    PrepareViews(e.pictures, channel, 1920);
    Show(e, Samples(1920), scale, channel);
    ASSERT_EQ(metr.Texts().size(), std::size_t(count)) << scale;
    EXPECT_EQ(metr.Texts().back().text, " " + std::to_string(count * step) + " ");
    EXPECT_EQ(Letters(metr, 5, metr.DeviceY(lastRow), 2, 1), "#./") << scale;
  }
  // Labels keep clear of each other and inside the picture, the last one too.
  for (const std::size_t samples : {100U, 419U, 1920U, 3200U}) {
    for (float scale = 2.5F; scale < 150; scale += 0.5F) {
      PrepareViews(e.pictures, Channel::Downscan, static_cast<std::int16_t>(samples));
      Show(e, Samples(samples), scale);
      float free = -420;
      for (const PictureText& text : metr.Texts()) {
        ASSERT_TRUE(text.y >= free - 0.01F && text.y <= 410.01F) << samples << " of " << scale << " m";
        free = text.y + 10;
      }
      EXPECT_EQ(metr.Texts().empty(), samples == 100 && scale > 100) << scale;  // a metre is less than a row
    }
  }
  EXPECT_EQ(FaultIn([&] { Show(e, Samples(1920), 0.05F); }), 6);
  EXPECT_EQ(e.window.waited, 0);
}

TEST(Views, SavedPictureHoldsThePanelsSideBySide) {
  TestRun e;
  PrepareViews(e.pictures, Channel::Downscan, 420);
  for (const int x : {0, 3, 510})
    e.pictures.ECHO.DrawDot(x, 0, x == 0 ? Red : Black);  // left out is the first
  for (const int x : {0, 9})
    e.pictures.SMPL.DrawDot(x, 0, Blue);  // the newest column of ECHO lies on the first
  for (const int x : {0, 99}) e.pictures.METR.DrawDot(x, 0, Red);
  e.pictures.SMPL.PrintAt(10, 100, 1);
  e.pictures.SMPL.PrintAt(210, 200, -0.1234567F);  // ends before the scale
  ComposeGraph(e.pictures);
  std::string marks;
  for (int x = 0; x < e.pictures.BMP.Width(); ++x)
    if (const char letter = LetterOf(e.pictures.BMP.At(x, 0)); letter != '.')
      marks += std::to_string(x) + letter + " ";
  EXPECT_EQ(marks, "0# 225# 230B 376R 401R ");
  EXPECT_EQ(Letters(e.pictures.BMP, 233, 100, 7, 3), "..#..../.##..../..#..../");
  EXPECT_EQ(Letters(e.pictures.BMP, 370, 200, 8, 3), "###...../..#...../..#...../");
  // On a dense screen the letters grow with the panels.
  ResizeViews(e.pictures, 454, 304, 52, 840);
  PrepareViews(e.pictures, Channel::Downscan, 420);
  e.pictures.METR.PrintAt(0, 0, 1);
  ComposeGraph(e.pictures);
  EXPECT_EQ(std::pair(e.pictures.BMP.Width(), e.pictures.BMP.Height()), std::pair(807, 840));
  EXPECT_EQ(Letters(e.pictures.BMP, 761, 0, 8, 4), "....##../....##../..####../..####../");
}

}  // namespace
}  // namespace sondrix
