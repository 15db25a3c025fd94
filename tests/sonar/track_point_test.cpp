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

}  // namespace
}  // namespace sondrix
