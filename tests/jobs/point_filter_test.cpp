#include "jobs/point_filter.h"

#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

TEST(PointFilter, WayAndChangeOfDepthAreRounded) {
  // Thresholds in metres, then a second sounding behind one of depth 3 at 1000, and whether it is a point.
  const std::tuple<float, float, const char*, float, bool> rows[] = {
      {1.0F, 0, "1000.97", 3, true},   {1.0F, 0, "1000.93", 3, false},   {0.3F, 0, "1000.25", 3, false},
      {0.2F, 0, "1000.25", 3, true},  // a tie goes to the even one
      {0, 0.001F, "1", 3.0006F, true}, {0, 0.001F, "1", 3.0004F, false}, {0, 0.0625F, "1", 3.0625F, false}};
  for (const auto& [minDist, depthStep, x, depth, isPoint] : rows) {
    RunLimits limits;
    limits.MinDistM = minDist;
    limits.DepthStepM = depthStep;
    PointFilter filter(CsvFilterRules, limits);
    const auto offer = [&filter](std::string_view at, float metres) {
      return filter.Offer(at, "1", [=] { return OfferedSounding{.x = at, .y = "1", .depth = metres}; })
          .outcome;
    };
    EXPECT_EQ(offer("1000", 3), Outcome::Selected);
    EXPECT_EQ(offer(x, depth), isPoint ? Outcome::Selected : Outcome::NotSelected) << x << ' ' << depth;
  }
}

}  // namespace
}  // namespace sondrix
