#include "echo/views.h"

#include "core/number_text.h"
#include "echo/letters.h"
#include "fault_in.h"
#include "test_run.h"

#include <limits>
#include <map>
#include <numbers>

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

void Show(TestRun& e, const Samples& samples, float scaleM = 30, std::uint8_t channel = 2) {
  ShowFrame(e.pictures, channel, samples, scaleM, 0, e.settings.EhoSens, 100, e.window);
}

// The texts of a picture: each at its row of a raster of 420 rows.
std::string TextsOf(const Picture& picture) {
  std::string texts;
  for (const PictureText& text : picture.Texts()) texts += text.text + "@" + LocText(text.y) + ";";
  return texts;
}

TEST(Views, EchoGrey) {
  const std::tuple<std::uint8_t, int, Colour> rows[] = {{255, 0, 0},    {1, 0, 254},   {0, 0, 255},
                                                        {255, 50, 50},  {10, 50, 255}, {200, -100, 0},
                                                        {1, -100, 154}, {0, -100, 255}};
  for (const auto& [sample, ehoSens, grey] : rows)
    EXPECT_EQ(EchoGrey(sample, ehoSens), grey * 0x010101) << int{sample} << " " << ehoSens;
}

TEST(Views, ColumnEqualsDotsFromTheDeepEnd) {
  for (const int height : {420, 9, 840}) {
    for (const int count : {1920, 420, 200, 9, 1, 0}) {
      TestRun e;
      ResizeViews(e.pictures, 227, 152, 26, height);
      PrepareViews(e.pictures, 2, static_cast<std::int16_t>(count));
      Samples samples;
      for (int i = 0; i < count; ++i) samples.push_back(static_cast<std::uint8_t>(i * 37));
      Picture dots = e.pictures.ECHO;
      for (int i = count; i-- > 1;) dots.DrawDot(510, i, EchoGrey(samples[static_cast<std::size_t>(i)], 0));
      Show(e, samples);
      for (int y = 0; y < height; ++y) ASSERT_EQ(e.pictures.ECHO.At(226, y), dots.At(226, y)) << count;
    }
  }
}

TEST(Views, FramesScrollAndTheCurveWaits) {
  TestRun e;
  ResizeViews(e.pictures, 6, 8, 4, 4);
  PrepareViews(e.pictures, 2, 8);
  Show(e, {0, 0, 0, 255, 255, 0, 0, 0});
  MarkDepths(e.pictures, 3, 6);
  Show(e, {9, 255, 0, 255, 255, 255, 0, 255});
  EXPECT_EQ(Letters(e.pictures.ECHO), ".....#/....R./....##/....B./");
  e.settings.EhoSens = -1;
  Show(e, {0, 0, 0, 0, 0, 0, 255, 255});
  MarkDepths(e.pictures, 2, 2);
  EXPECT_EQ(Letters(e.pictures.ECHO), "....#./...R.B/...##./...B.#/");
  EXPECT_EQ(Letters(e.pictures.SMPL), "......../......../......../......../");  // nobody has looked yet
  Refresh(e.pictures);
  EXPECT_EQ(Letters(e.pictures.SMPL), "B......./RRRRRRRR/BBBB..../....BBBB/");
}

TEST(Views, DepthScale) {
  // The channel, metres; how many texts, metres between them, the last one's row.
  const std::tuple<std::uint8_t, float, int, int, double> rows[] = {
      {2, 30.48F, 15, 2, 1860}, {5, 30, 2, 10, 1280}, {0, 150, 74, 2, 1776}, {2, 150.01F, 7, 2, 1792}};
  TestRun e;
  const Picture& metr = e.pictures.METR;
  for (const auto& [channel, scale, count, step, lastRow] : rows) {
    PrepareViews(e.pictures, channel, 1920);
    Show(e, Samples(1920), scale, channel);
    ASSERT_EQ(metr.Texts().size(), std::size_t(count)) << scale;
    EXPECT_EQ(metr.Texts().back().text, " " + std::to_string(count * step) + " ");
    EXPECT_EQ(Letters(metr, 5, metr.DeviceY(lastRow), 2, 1), "#./") << scale;
    const std::uint64_t version = metr.Version();
    Show(e, Samples(1920), scale, channel);
    // cppcheck-suppress knownConditionTrueFalse ; the call between may change it
    EXPECT_EQ(metr.Version(), version);
  }
  float scaleM = 150.01F;
  ShowFrame(e.pictures, 2, Samples(1920), scaleM, 0, 0, 0, e.window);
  EXPECT_EQ(scaleM, 15);
  Show(e, Samples(1920), -3);  // no scale, and the next one is new
  EXPECT_EQ(e.pictures.LastScale, -3);
  EXPECT_EQ(FaultIn([&] { Show(e, Samples(1920), 0.05F); }), 6);
  EXPECT_EQ(e.window.waited, 0);
}

TEST(Views, DepthTexts) {
  TestRun e;
  PrepareViews(e.pictures, 2, 1920);
  PrintDelta(e.pictures, -1.25F);
  PrintDepths(e.pictures, 960, 1010, 15, 16.5F, 2);
  PrintDepths(e.pictures, 960, 1010, 15, 16.5F, 5);
  EXPECT_EQ(TextsOf(e.pictures.SMPL), "-1.25 @295.3125; 15 @212.1875; 16.5 @210; 16.5 @210;");
}

TEST(Views, Needles) {
  Picture crs(40, 40);
  DrawNeedle(crs, static_cast<float>(std::numbers::pi / 2), Black);
  EXPECT_EQ(Letters(crs, 16, 16, 7, 7), "......./..###../.#...#./.#.####/.#...#./..###../......./");
  EXPECT_EQ(Letters(crs, 19, 19, 21, 1), std::string(21, '#') + "/");
  DrawNeedle(crs, static_cast<float>(std::numbers::pi), Blue);
  EXPECT_EQ(Runs(crs, 19), "17. 1B 1. 21B");
  EXPECT_EQ(FaultIn([&] { DrawNeedle(crs, std::numeric_limits<float>::quiet_NaN(), Black); }), 6);
}

TEST(Views, Layout3D) {
  TestRun e;
  PrepareViews(e.pictures, 9, 700);
  EXPECT_EQ(Runs(e.pictures.METR, 2), "210. 1# 48. 1# 48. 1# 48. 1# 48. 1# 13.");
  EXPECT_TRUE(TextsOf(e.pictures.METR).starts_with(" 10 @")) << TextsOf(e.pictures.METR);
  EXPECT_EQ(e.pictures.METR.Texts().back().text, " 40 ");
  float scaleM = 64;
  ShowFrame(e.pictures, 9, Samples(700), scaleM, 2.5F, 0, 100, e.window);
  EXPECT_EQ(e.window.waited, 100);
  ASSERT_EQ(e.pictures.SMPL.Texts().size(), 4u);
  EXPECT_EQ(e.pictures.SMPL.Texts()[3].text, " 2.5 ");
  Refresh(e.pictures);
  EXPECT_EQ(Runs(e.pictures.SMPL, 76), "420g");
}

TEST(Views, Columns3D) {
  TestRun e, whole;
  ResizeViews(e.pictures, 4, 32, 4, 32);
  PrepareViews(e.pictures, 9, 700);
  e.pictures.ECHO.SetScaleHeight(32 * 2);  // an entry per pixel, and the boat's line far below
  for (int row = 0; row < 64; ++row) e.pictures.ECHO.DrawDot(510, row, Red);
  Draw3DEntry(e.pictures, Side3D::Left, 125, 255, 255, 0);  // rows 5 and 4
  Draw3DEntry(e.pictures, Side3D::Left, 200, 255, 255, 0);  // above the picture
  Close3DSide(e.pictures, Side3D::Left, 126, 255);
  EXPECT_EQ(Runs(e.pictures.ECHO, 3), "2. 1# 29R");

  PrepareViews(whole.pictures, 9, 700);
  Draw3DEntry(whole.pictures, Side3D::Left, 0, 128, 0, 0);
  Draw3DEntry(whole.pictures, Side3D::Left, 1, 64, 128, 0);
  Close3DSide(whole.pictures, Side3D::Left, 2, 64);
  Draw3DEntry(whole.pictures, Side3D::Right, 0, 255, 64, 0);
  Close3DSide(whole.pictures, Side3D::Right, 1, 255);
  std::string lines;
  for (const PendingLine& line : whole.pictures.Curve.Lines) {
    for (const float at : {line.x1, line.y1, line.x2, line.y2}) lines += LocText(at) + " ";
    lines += LetterOf(line.colour) + std::string(", ");
  }
  EXPECT_EQ(lines,
            "256 128 128 127 B, 128 127 192 126 B, 192 125 256 128 R, 256 128 1 129 B, 1 130 256 128 R, ");
  const Picture& echo = whole.pictures.ECHO;
  for (const auto& [row, colour] :
       std::map<int, Colour>{{255, EchoGrey(128, 0)}, {252, EchoGrey(64, 0)}, {258, Black}, {262, White}})
    EXPECT_EQ(echo.At(226, echo.DeviceY(row)), colour) << row;
}

TEST(Views, Mounting) {
  const struct {
    float x, y;
    int antennaX, antennaY, ducerX, ducerY;  // centres of the circles from above
    float gpsX, wordX;
  } rows[] = {{1, 0, 244, 256, 268, 256, 179, 283},
              {20, 1, 128, 256, 384, 244, 63, 399},
              {0, 0, 253, 256, 256, 256, 271, 186},
              {-1, -20, 265, 128, 244, 256, 283, 174}};
  TestRun e;
  const Picture& echo = e.pictures.ECHO;
  for (const auto& row : rows) {
    DrawMounting(e.pictures, row.x, row.y, e.messages);
    const int radius = 4;  // 8 units on 227 pixels
    EXPECT_EQ(echo.At(echo.DeviceX(row.antennaX) - radius, echo.DeviceY(row.antennaY)), Red) << row.x;
    EXPECT_EQ(echo.At(echo.DeviceX(row.ducerX) + radius, echo.DeviceY(row.ducerY)), Blue) << row.x;
    ASSERT_EQ(echo.Texts().size(), 2u);
    EXPECT_FLOAT_EQ(echo.Texts()[0].x, row.gpsX * 227 / 512) << row.x;
    EXPECT_FLOAT_EQ(echo.Texts()[1].x, row.wordX * 227 / 512) << row.x;
    EXPECT_EQ(echo.At(echo.DeviceX(32), echo.DeviceY(470)), Blue);
    EXPECT_EQ(echo.At(echo.DeviceX(256), echo.DeviceY(50)), Black);
  }
  DrawMounting(e.pictures, -3e38F, 3e38F, e.messages);
  EXPECT_EQ(echo.Texts().size(), 0u);
}

TEST(Views, SavedPictureHoldsThePanelsSideBySide) {
  TestRun e;
  PrepareViews(e.pictures, 2, 420);
  const auto column = [](Picture& picture, int x, Colour colour) { picture.DrawLine(x, 0, x, 419, colour); };
  column(e.pictures.ECHO, 0, Red);  // left out
  column(e.pictures.ECHO, 3, Black);
  column(e.pictures.ECHO, 510, Blue);  // the newest column
  column(e.pictures.SMPL, 0, Red);     // lies below it
  column(e.pictures.METR, 0, Red);
  column(e.pictures.METR, 99, Black);
  e.pictures.SMPL.PrintAt(10, 100, 1);
  ComposeGraph(e.pictures);
  std::string marks;
  for (int x = 0; x < e.pictures.BMP.Width(); ++x)
    if (const char letter = LetterOf(e.pictures.BMP.At(x, 0)); letter != '.')
      marks += std::to_string(x) + letter + " ";
  EXPECT_EQ(marks, "0# 225B 376R 401# ");
  EXPECT_EQ(Letters(e.pictures.BMP, 233, 100, 7, 3), "..#..../.##..../..#..../");
  SaveGraph(e.pictures, e.OutPath("1.bmp"));
  EXPECT_EQ(e.Out("1.bmp").size(), 54u + 1208 * 420);
  EXPECT_EQ(FaultIn([&] { SaveGraph(e.pictures, e.OutPath("no/1.bmp")); }), 76);
}

}  // namespace
}  // namespace sondrix
