#include "echo/views.h"

#include "core/fix.h"
#include "echo/face.h"
#include "echo/points_3d.h"
#include "fault_in.h"
#include "geo/constants.h"
#include "test_run.h"

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

void Show(TestRun& e, const Samples& samples, float scaleM = 30, Channel channel = Channel::Downscan) {
  ShowFrame(e.pictures, channel, samples, ShownScale(channel, scaleM), 3.5F, e.settings.EhoSens, 100,
            e.window);
}

// Frames under several scales, contrasts and sample counts.
void ShowBottom(TestRun& e, Channel channel, float scaleM) {
  Samples samples(1920);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<std::uint8_t>(i * i / 300);
  PrepareViews(e.pictures, channel, 1920);
  Show(e, samples, scaleM, channel);
  for (int contrast = -100; contrast <= 50; contrast += 15) {
    e.settings.EhoSens = contrast;
    Show(e, samples, scaleM + static_cast<float>(contrast / 30), channel);
    MarkDepths(e.pictures, static_cast<std::int16_t>(900 + contrast), 1000);
    samples.resize(samples.size() - 130);
  }
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

TEST(Scenes, AreDrawnAsTheyWere) {
  const std::tuple<const char*, std::function<void(TestRun&)>, std::uint64_t> rows[] = {
      {"downscan", [](TestRun& e) { ShowBottom(e, Channel::Downscan, 21); }, 0xAFEE805E99F4BDA4},
      {"sidescan", [](TestRun& e) { ShowBottom(e, Channel::Sidescan, 150); }, 0x582D7C29F89DD969},
      {"3D", [](TestRun& e) { e.window.informed = {Show3D(e)}; }, 0xAC8E27672F1A3429},
      {"mounting to the right", [](TestRun& e) { DrawMounting(e.pictures, 0.4F, 4, e.messages); },
       0x631B526B79629574},
      {"mounting to the left", [](TestRun& e) { DrawMounting(e.pictures, -3, -2, e.messages); },
       0x7F2E4225C8A19C12},
      {"mounting far away", [](TestRun& e) { DrawMounting(e.pictures, -3e38F, 3e38F, e.messages); },
       0xD808AD93BB020A05},
      {"needles",
       [](TestRun& e) {
         DrawNeedle(e.pictures.CRS, static_cast<float>(HalfPi), Blue);
         DrawNeedle(e.pictures.HED, 0.6F, Black);
       },
       0xDEF0CC8DD2075ADA},
      {"letters",
       [](TestRun& e) {
         e.pictures.ECHO.PrintAt(-2, -3, "0123456789-+., ABCDEGKPRSTU", Red);
         e.pictures.SMPL.PrintAt(2, 12, "ДатчикзЧИ ÄВАСЕКРТ\xD0", Blue);
         e.pictures.METR.PrintAt(2, 416, "geber");
       },
       0x5D5C953D128BE347},
  };
  for (const auto& [name, draw, digest] : rows) {
    TestRun e;
    draw(e);
    std::string all = e.Record();
    ResizeViews(e.pictures, 512, 256, 100, 512);  // a unit is a pixel or more
    draw(e);
    all += e.Record();
    ResizeViews(e.pictures, 454, 304, 52, 840);  // a dense screen
    all += e.Record();
    draw(e);
    EXPECT_TRUE(HasDigest(all + e.Record(), digest)) << name;
  }
}

// Of each other and of the picture's end, the last one too.
TEST(Views, LabelsOfTheDepthScaleKeepClear) {
  TestRun e;
  const Picture& metr = e.pictures.METR;
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

}  // namespace
}  // namespace sondrix
