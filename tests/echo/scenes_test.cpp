#include "core/fix.h"
#include "echo/face.h"
#include "echo/points_3d.h"
#include "echo/views.h"
#include "geo/constants.h"
#include "test_run.h"

#include <cmath>
#include <functional>

namespace sondrix {
namespace {

// FNV-1a over the pixels and texts of the panels and of the picture of all three.
std::uint64_t ChecksumOf(Pictures& pictures) {
  std::uint64_t sum = 0xCBF29CE484222325;
  const auto add = [&sum](std::uint64_t value) { sum = (sum ^ value) * 0x100000001B3; };
  ComposeGraph(pictures);
  for (const Picture* picture :
       {&pictures.ECHO, &pictures.SMPL, &pictures.METR, &pictures.BMP, &pictures.CRS}) {
    for (int y = 0; y < picture->Height(); ++y)
      for (int x = 0; x < picture->Width(); ++x) add(picture->At(x, y));
    for (const PictureText& text : picture->Texts()) {
      for (const float at : {text.x, text.y}) add(static_cast<std::uint64_t>(std::lround(at * 16)));
      for (const char c : text.text) add(static_cast<std::uint8_t>(c));
      add(text.colour);
    }
  }
  return sum;
}

void ShowBottom(TestRun& e, Channel channel, float scaleM) {
  std::vector<std::uint8_t> samples(1920);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<std::uint8_t>(i * i / 300);
  PrepareViews(e.pictures, channel, 1920);
  ShowFrame(e.pictures, channel, samples, scaleM, 3.5F, 20, 0, e.window);
  MarkDepths(e.pictures, 900, 1000);
  PrintDelta(e.pictures, -0.5F);
  PrintDepths(e.pictures, 900, 1000, 7.25F, 8, channel);
}

// Both sides of a boat on a north-eastern course, with an empty depth, one below the view, and a share of the
// width that leaves the last one out.
std::string Show3D(TestRun& e) {
  const Entry3D left[] = {{20, 5}, {0, 10}, {80, 40}, {30, 90}}, right[] = {{10, 5}, {12, 6}, {40, 50}};
  PrepareViews(e.pictures, Channel::Scan3D, 256);
  e.settings.MakeGraf = true;
  e.limits.MinDistM = 1;
  e.limits.SidePercent = 50;
  e.limits.DepthAddM = 0.25F;
  Points3DState state{30};
  std::string csv;
  const Fix fix{60, 30, 0.75, "now", true, true, true};
  ShowFrame(e.pictures, Channel::Scan3D, {}, 20, 3.5F, 0, 0, e.window);
  Points3D(e.run, state, fix, {{left, 4, 90.0F}, {right, 3, 50.0F}}, csv);
  e.settings.UseRev = e.settings.UseUTM = true;
  Points3D(e.run, state, fix, {{left, 4, 90.0F}, {right, 3, 50.0F}}, csv);
  return csv;
}

// A scene that differs was drawn otherwise: look at it before its number is changed here.
TEST(Scenes, AreDrawnAsTheyWere) {
  const std::tuple<const char*, std::function<void(TestRun&)>, std::uint64_t> rows[] = {
      {"downscan", [](TestRun& e) { ShowBottom(e, Channel::Downscan, 21); }, 0x2CD72CA7577DC1A5},
      {"sidescan", [](TestRun& e) { ShowBottom(e, Channel::Sidescan, 95); }, 0x67484F5BA1397562},
      {"3D", [](TestRun& e) { Show3D(e); }, 0x87C14721DBFEAB3F},
      {"mounting to the right", [](TestRun& e) { DrawMounting(e.pictures, 0.4F, 4, e.messages); },
       0x67BE86ABF0ACFDA3},
      {"mounting to the left", [](TestRun& e) { DrawMounting(e.pictures, -3, -2, e.messages); },
       0xE0B941DEAE95F5D5},
      {"mounting far away", [](TestRun& e) { DrawMounting(e.pictures, -3e38F, 3e38F, e.messages); },
       0x5D8877D66FED581A},
      {"needle to the east", [](TestRun& e) { DrawNeedle(e.pictures.CRS, static_cast<float>(HalfPi), Blue); },
       0xB14EADB10E0FF1B5},
      {"needle", [](TestRun& e) { DrawNeedle(e.pictures.CRS, 0.6F, Black); }, 0xBA116AFC5E3BA76A},
      {"letters",
       [](TestRun& e) {
         e.pictures.ECHO.PrintAt(-2, -3, "0123456789-+., ABCDEGKPRSTU", Red);
         e.pictures.SMPL.PrintAt(2, 12, "ДатчикзЧИ ÄВАСЕКРТ", Blue);
         e.pictures.METR.PrintAt(2, 416, "geber");
       },
       0x14D1EB43BDF52624},
  };
  for (const auto& [name, draw, checksum] : rows) {
    TestRun e;
    ResizeViews(e.pictures, 512, 256, 100, 512);  // a unit is a pixel or more
    draw(e);
    EXPECT_EQ(ChecksumOf(e.pictures), checksum) << name;
  }
}

TEST(Points3D, GivesTheOutsideOfATurn) {
  TestRun e;
  EXPECT_EQ(Show3D(e),
            "60.000009324,29.999980016,6.35,now\r\n60.000018648,29.999960033,0,now\r\n"
            "60.000074593,29.99984013,24.63,now\r\n667293.66,6655206.47,3.3,now\r\n");
}

}  // namespace
}  // namespace sondrix
