#include "echo/views.h"

#include "core/files.h"
#include "echo/echo_run.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <numbers>

namespace sondrix {
namespace {

using Raster = std::vector<std::string>;
using Samples = std::vector<std::uint8_t>;

void Show(EchoRun& e, const Samples& samples, float scaleM = 30, std::uint8_t channel = 2) {
  ShowFrame(e.pictures, channel, samples, scaleM, 0, e.settings.EhoSens, 100, e.window);
}

TEST(Views, EchoGrey) {
  const struct {
    std::uint8_t sample;
    int ehoSens, grey;
  } rows[] = {{255, 0, 0},   {1, 0, 254},    {0, 0, 255},    {255, 50, 50},
              {10, 50, 255}, {200, -100, 0}, {1, -100, 154}, {0, -100, 255}};
  for (const auto& row : rows)
    EXPECT_EQ(EchoGrey(row.sample, row.ehoSens), static_cast<Colour>(row.grey) * 0x010101)
        << int{row.sample} << " " << row.ehoSens;
}

TEST(Views, ColumnEqualsDotsFromTheDeepEnd) {
  for (const int height : {420, 9, 840}) {
    for (const int count : {1920, 420, 200, 9, 1, 0}) {
      EchoRun e;
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
  EchoRun e;
  ResizeViews(e.pictures, 6, 8, 4, 4);
  PrepareViews(e.pictures, 2, 8);
  Show(e, {0, 0, 0, 255, 255, 0, 0, 0});
  MarkDepths(e.pictures, 3, 6);
  Show(e, {9, 255, 0, 255, 255, 255, 0, 255});
  EXPECT_EQ(Letters(e.pictures.ECHO), (Raster{".....#", "....R.", "....##", "....B."}));
  e.settings.EhoSens = -1;
  Show(e, {0, 0, 0, 0, 0, 0, 255, 255});
  MarkDepths(e.pictures, 2, 2);
  EXPECT_EQ(Letters(e.pictures.ECHO), (Raster{"....#.", "...R.B", "...##.", "...B.#"}));
  EXPECT_EQ(Letters(e.pictures.SMPL), Raster(4, "........"));  // nobody has looked yet
  Refresh(e.pictures);
  EXPECT_EQ(Letters(e.pictures.SMPL), (Raster{"B.......", "RRRRRRRR", "BBBB....", "....BBBB"}));
}

TEST(Views, DepthScale) {
  const struct {
    std::uint8_t channel;
    float scaleM;
    int count, step;
    double lastRow;
  } rows[] = {
      {2, 30.48F, 15, 2, 1860}, {5, 30, 2, 10, 1280}, {0, 150, 74, 2, 1776}, {2, 150.01F, 7, 2, 1792}};
  for (const auto& row : rows) {
    EchoRun e;
    PrepareViews(e.pictures, row.channel, 1920);
    Show(e, Samples(1920), row.scaleM, row.channel);
    const Picture& metr = e.pictures.METR;
    ASSERT_EQ(metr.Texts().size(), static_cast<std::size_t>(row.count)) << row.scaleM;
    EXPECT_EQ(metr.Texts().back().text, " " + std::to_string(row.count * row.step) + " ");
    EXPECT_EQ(metr.At(5, metr.DeviceY(row.lastRow)), Black);
    EXPECT_EQ(metr.At(6, metr.DeviceY(row.lastRow)), White);
    const std::uint64_t version = metr.Version();
    Show(e, Samples(1920), row.scaleM, row.channel);
    EXPECT_EQ(metr.Version(), version);
  }
  EchoRun e;
  float scaleM = 150.01F;
  ShowFrame(e.pictures, 2, Samples(1920), scaleM, 0, 0, 0, e.window);
  EXPECT_EQ(scaleM, 15);
  Show(e, Samples(1920), -3);  // no scale, and the next one is new
  EXPECT_EQ(e.pictures.LastScale, -3);
  EXPECT_EQ(FaultIn([&] { Show(e, Samples(1920), 0.05F); }), 6);
  EXPECT_EQ(e.window.waited, 0);
}

TEST(Views, DepthTexts) {
  EchoRun e;
  PrepareViews(e.pictures, 2, 1920);
  PrintDelta(e.pictures, -1.25F);
  PrintDepths(e.pictures, 960, 1010, 15, 16.5F, 2);
  PrintDepths(e.pictures, 960, 1010, 15, 16.5F, 5);
  const auto& texts = e.pictures.SMPL.Texts();
  ASSERT_EQ(texts.size(), 4u);
  EXPECT_EQ(texts[0].text, "-1.25 ");
  EXPECT_FLOAT_EQ(texts[0].y, 1350 * 420.0F / 1920);
  EXPECT_EQ(texts[1].text, " 15 ");
  EXPECT_FLOAT_EQ(texts[1].y, 970 * 420.0F / 1920);
  EXPECT_EQ(texts[2].text, " 16.5 ");
  EXPECT_EQ(texts[2].y, 210);
  EXPECT_EQ(texts[3].text, " 16.5 ");
}

TEST(Views, Needles) {
  Picture crs(40, 40);
  DrawNeedle(crs, static_cast<float>(std::numbers::pi / 2), Black);
  EXPECT_EQ(Letters(crs, 16, 16, 7, 7), (Raster{".......", "..###..", ".#...#.", ".#.####", ".#...#.",  //
                                                "..###..", "......."}));
  EXPECT_EQ(Letters(crs, 19, 19, 21, 1), Raster{std::string(21, '#')});
  DrawNeedle(crs, static_cast<float>(std::numbers::pi), Blue);
  EXPECT_EQ(Runs(crs, 19), "17. 1B 1. 21B");
  EXPECT_EQ(FaultIn([&] { DrawNeedle(crs, std::numeric_limits<float>::quiet_NaN(), Black); }), 6);
}

TEST(Views, Layout3D) {
  EchoRun e;
  PrepareViews(e.pictures, 9, 700);
  EXPECT_EQ(Runs(e.pictures.METR, 2), "210. 1# 48. 1# 48. 1# 48. 1# 48. 1# 13.");
  ASSERT_EQ(e.pictures.METR.Texts().size(), 4u);
  EXPECT_EQ(e.pictures.METR.Texts()[3].text, " 40 ");
  float scaleM = 64;
  ShowFrame(e.pictures, 9, Samples(700), scaleM, 2.5F, 0, 100, e.window);
  EXPECT_EQ(e.window.waited, 100);
  ASSERT_EQ(e.pictures.SMPL.Texts().size(), 4u);
  EXPECT_EQ(e.pictures.SMPL.Texts()[3].text, " 2.5 ");
  Refresh(e.pictures);
  EXPECT_EQ(Runs(e.pictures.SMPL, 76), "420g");
}

TEST(Views, Columns3D) {
  EchoRun e;
  ResizeViews(e.pictures, 4, 32, 4, 32);
  PrepareViews(e.pictures, 9, 700);
  e.pictures.ECHO.SetScaleHeight(32 * 2);  // an entry per pixel, and the boat's line far below
  for (int row = 0; row < 64; ++row) e.pictures.ECHO.DrawDot(510, row, Red);
  Draw3DEntry(e.pictures, Side3D::Left, 125, 255, 255, 0);  // rows 5 and 4
  Draw3DEntry(e.pictures, Side3D::Left, 200, 255, 255, 0);  // above the picture
  Close3DSide(e.pictures, Side3D::Left, 126, 255);
  EXPECT_EQ(Runs(e.pictures.ECHO, 3), "2. 1# 29R");

  EchoRun whole;
  PrepareViews(whole.pictures, 9, 700);
  Draw3DEntry(whole.pictures, Side3D::Left, 0, 128, 0, 0);
  Draw3DEntry(whole.pictures, Side3D::Left, 1, 64, 128, 0);
  Close3DSide(whole.pictures, Side3D::Left, 2, 64);
  Draw3DEntry(whole.pictures, Side3D::Right, 0, 255, 64, 0);
  Close3DSide(whole.pictures, Side3D::Right, 1, 255);
  const auto& lines = whole.pictures.Curve.Lines;
  const struct {
    float x1, y1, x2, y2;
    Colour colour;
  } rows[] = {{256, 128, 128, 127, Blue},
              {128, 127, 192, 126, Blue},
              {192, 125, 256, 128, Red},
              {256, 128, 1, 129, Blue},
              {1, 130, 256, 128, Red}};
  ASSERT_EQ(lines.size(), std::size(rows));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].x1, rows[i].x1) << i;
    EXPECT_EQ(lines[i].y1, rows[i].y1) << i;
    EXPECT_EQ(lines[i].x2, rows[i].x2) << i;
    EXPECT_EQ(lines[i].y2, rows[i].y2) << i;
    EXPECT_EQ(lines[i].colour, rows[i].colour) << i;
  }
  const Picture& echo = whole.pictures.ECHO;
  EXPECT_EQ(echo.At(226, echo.DeviceY(255)), EchoGrey(128, 0));
  EXPECT_EQ(echo.At(226, echo.DeviceY(252)), EchoGrey(64, 0));
  EXPECT_EQ(echo.At(226, echo.DeviceY(258)), Black);
  EXPECT_EQ(echo.At(226, echo.DeviceY(262)), White);
}

TEST(Views, Mounting) {
  const struct {
    float x, y;
    int antennaX, antennaY, ducerX, ducerY;  // centres of the circles from above
    int gpsX, wordX;
  } rows[] = {{1, 0, 244, 256, 268, 256, 179, 283},
              {20, 1, 128, 256, 384, 244, 63, 399},
              {0, 0, 253, 256, 256, 256, 271, 186},
              {-1, -20, 265, 128, 244, 256, 283, 174}};
  for (const auto& row : rows) {
    EchoRun e;
    DrawMounting(e.pictures, row.x, row.y, e.messages);
    const Picture& echo = e.pictures.ECHO;
    const int radius = 4;  // 8 units on 227 pixels
    EXPECT_EQ(echo.At(echo.DeviceX(row.antennaX) - radius, echo.DeviceY(row.antennaY)), Red) << row.x;
    EXPECT_EQ(echo.At(echo.DeviceX(row.ducerX) + radius, echo.DeviceY(row.ducerY)), Blue) << row.x;
    ASSERT_EQ(echo.Texts().size(), 2u);
    EXPECT_FLOAT_EQ(echo.Texts()[0].x, static_cast<float>(row.gpsX) * 227 / 512) << row.x;
    EXPECT_FLOAT_EQ(echo.Texts()[1].x, static_cast<float>(row.wordX) * 227 / 512) << row.x;
    EXPECT_EQ(echo.At(echo.DeviceX(32), echo.DeviceY(470)), Blue);
    EXPECT_EQ(echo.At(echo.DeviceX(256), echo.DeviceY(50)), Black);
  }
  EchoRun e;
  DrawMounting(e.pictures, -3e38F, 3e38F, e.messages);
  EXPECT_EQ(e.pictures.ECHO.Texts().size(), 0u);
}

TEST(Views, SavedPictureHoldsThePanelsSideBySide) {
  EchoRun e;
  PrepareViews(e.pictures, 2, 420);
  e.pictures.ECHO.DrawLine(0, 0, 0, 419, Red);  // left out
  e.pictures.ECHO.DrawLine(3, 0, 3, 419, Black);
  e.pictures.ECHO.DrawLine(510, 0, 510, 419, Blue);  // the newest column
  e.pictures.SMPL.DrawLine(0, 0, 0, 419, Red);       // lies below it
  e.pictures.METR.DrawLine(0, 0, 0, 419, Red);
  e.pictures.METR.DrawLine(99, 0, 99, 419, Black);
  e.pictures.SMPL.PrintAt(10, 100, 1);
  ComposeGraph(e.pictures);
  std::string marks;
  for (int x = 0; x < e.pictures.BMP.Width(); ++x)
    if (e.pictures.BMP.At(x, 0) != White)
      marks += std::to_string(x) + LetterOf(e.pictures.BMP.At(x, 0)) + " ";
  EXPECT_EQ(marks, "0# 225B 376R 401# ");
  EXPECT_EQ(Letters(e.pictures.BMP, 233, 100, 7, 3), (Raster{"..#....", ".##....", "..#...."}));

  const auto path = std::filesystem::temp_directory_path() / "sondrix_saved_picture.bmp";
  SaveGraph(e.pictures, path.string());
  const std::string bytes = ReadWhole(path.string());
  std::filesystem::remove(path);
  EXPECT_EQ(bytes.size(), 54u + 1208 * 420);
  EXPECT_EQ(FaultIn([&] { SaveGraph(e.pictures, (path / "no" / "1.bmp").string()); }), 76);
}

}  // namespace
}  // namespace sondrix
