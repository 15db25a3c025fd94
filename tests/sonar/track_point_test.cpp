#include "sonar/track_point.h"

#include "core/number_text.h"
#include "samples/echogram.h"
#include "test_run.h"

namespace sondrix {
namespace {

// The depth of a frame is its number.
TEST(TrackPoint, LiveTrackStepsWithTheSpeed) {
  std::vector<SampleFrame> frames;
  for (int i = 0; i <= 500; ++i) {
    frames.push_back(Frame(2, static_cast<float>(i) + 0.04F, 4'105'000 + i, 7'533'000, 320));
    frames.back().Speed = i < 200 ? 6.0F : i < 300 ? 3.0F : 2.9F;
  }
  TestRun test;
  test.settings.ViewOzi = true;
  std::string points;  // depth:code
  test.link.CreateTrackPoint = [&](int, int code, double, double, double feet, double) {
    points += LocText(feet) + ":" + std::to_string(code) + " ";
  };
  test.Source("a.sl2", EchogramBytes(2, frames)).Click();
  EXPECT_EQ(points, "0:1 50:0 100:0 150:0 200:0 300:0 400:0 ");
}

TEST(TrackPoint, MarkIsServedOnceAtTheNextPointWithADepth) {
  TestRun test;
  test.messages = *MessagesOf(LangRussian);
  auto dry = Frame(2, 0);
  auto wet = Frame(2, 10.5F);
  dry.FrameIndex = 1199;
  wet.FrameIndex = 1200;
  test.Source("a.sl2", EchogramBytes(2, {dry, wet, wet}));
  test.settings.MakeGraf = true;
  test.window.onPump = [&](int pump) {
    if (pump == 2) MarkClick(test.run, MarkRelief);
    if (pump == 3) MarkClick(test.run, MarkFish);
  };
  test.Click();
  EXPECT_EQ(test.Out("a_usr.wpt"),
            "OziExplorer Waypoint File Version 1.1\r\nWGS 84\r\nReserved 2\r\ngarmin\r\n"
            "0,3.2,  55.999628436,  36.999896059,41569.5000000, 23, 0, 3,         0,  16776960,#1200 4.8 "
            "\xEA\xEC/\xF7 "
            ", 2, 0,    0,     -0, 6, 0,17,0,10.0,2,,,,240\r\n\r\n");
  EXPECT_TRUE(test.HasOut("1200.bmp"));
}

}  // namespace
}  // namespace sondrix
