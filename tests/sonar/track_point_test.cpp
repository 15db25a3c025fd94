#include "sonar/track_point.h"

#include "samples/echogram.h"
#include "sonar/sl_format.h"
#include "test_run.h"

#include <tuple>

namespace sondrix {
namespace {

SlFrame At(std::int32_t mercX, float course = 1, float heading = 1) {
  SlFrame frame;
  frame.MercX = mercX;
  frame.MercY = 7'533'000;
  frame.Course = course;
  frame.Heading = heading;
  return frame;
}

TEST(TrackPoint, DistanceCountsFromTheLastPointThatPassed) {
  TestRun test;
  test.limits.MinDistM = 2;
  TrackState track;
  std::string csv, written;
  for (const int x : {100, 101, 102, 103, 105}) {
    const std::size_t before = csv.size();
    TrackPointOf(test.run, track, {At(x), 3, 0, 0}, csv);
    written += csv.size() > before ? "x" : ".";
  }
  EXPECT_EQ(written, "x..x.");
}

TEST(TrackPoint, TurnFlags) {
  // Course, heading, TurnExceeded, TurnUp in the order of a run; the limit is 0.1 rad.
  const std::tuple<float, float, bool, bool> rows[] = {
      {1.0F, 0, false, true},      // the first angle has nothing to turn from
      {1.05F, 0, false, true},     // below the limit
      {1.30F, 0, true, true},      // a turn to the right
      {1.30F, 0, true, true},      // nothing moved: the flags stay
      {0, 0, true, true},          // absent
      {1.10F, 0, true, false},     // to the left
      {1.11F, 2.0F, false, true},  // the first heading overwrites what the course set
  };
  TestRun test;
  test.limits.MaxTurnRad = 0.1F;
  TrackState track;
  std::string csv;
  for (const auto& [course, heading, exceeded, up] : rows) {
    TrackPointOf(test.run, track, {At(0, course, heading), 3, 0, 0}, csv);
    EXPECT_EQ(std::pair(track.fix.TurnExceeded, track.fix.TurnUp), std::pair(exceeded, up)) << course;
  }
}

TEST(TrackPoint, LiveTrackStepsWithTheSpeed) {
  TestRun test;
  test.settings.ViewOzi = true;
  int counter = 0;
  std::string points;  // frame:code
  test.link.CreateTrackPoint = [&](int, int code, double, double, double feet, double) {
    points += std::to_string(counter) + ":" + std::to_string(code) + " ";
    EXPECT_EQ(feet, 10.1);
  };
  TrackState track;
  track.TrackStart = 1;
  std::string csv;
  for (; counter <= 500; ++counter) {
    SlFrame frame = At(counter);
    frame.WaterDepth = 10.06F;
    frame.Speed = counter < 200 ? 7.0F : counter < 300 ? 4.0F : 2.0F;
    TrackPointOf(test.run, track, {frame, 3, 0, counter}, csv);
  }
  EXPECT_EQ(points, "0:1 50:0 100:0 150:0 200:0 300:0 400:0 ");
}

TEST(TrackPoint, MarkIsServedOnceAtTheNextPointWithADepth) {
  TestRun test;
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
  EXPECT_EQ(
      test.Out("a_usr.wpt"),
      "OziExplorer Waypoint File Version 1.1\r\nWGS 84\r\nReserved 2\r\ngarmin\r\n"
      "0,3.2,  55.999628436,  36.999896059,41569.5000000, 23, 0, 3,         0,  16776960,#1200 4.8 km/h "
      ", 2, 0,    0,     -0, 6, 0,17,0,10.0,2,,,,240\r\n\r\n");
  EXPECT_TRUE(test.HasOut("1200.bmp"));
}

}  // namespace
}  // namespace sondrix
