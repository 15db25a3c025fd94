#include "jobs/point_filter.h"

#include <gtest/gtest.h>
#include <sstream>

namespace sondrix {
namespace {

// Soundings are texts "x y depth outcome segment way": the outcome is r for a repeat, - for one passed over,
// + for a point, G for a point behind a gap; the segment is SegmentCode and the way AccDist before the
// selection.
TEST(PointFilter, Tables) {
  struct Row {
    const FilterRules& rules;
    float minDist, depthStep, maxDist;
    std::vector<const char*> soundings;
  };
  const std::vector<Row> rows = {
      // Without thresholds all but repeats are points; the way has one decimal, ties to even.
      {CsvFilterRules, 0, 0, 0, {"1000 2000 5 + 0 1", "1000 2000 6 r 0 0", "1000.25 2000 5 + 0 0.2"}},
      // The sums grow until both reach their threshold; equal passes.
      {CsvFilterRules, 5, 0.25F, 0, {"1000 2000 5 + 0 6", "1003 2004 5 - 0 5", "1003 2005 5.25 + 0 6"}},
      // A dip cancels out unless it was selected; then its way back counts as much.
      {CsvFilterRules, 2, 0.3F, 0, {"1000 2000 5 + 0 3", "1001 2000 5.4 - 0 1", "1002 2000 5 - 0 2"}},
      {CsvFilterRules, 0, 0.3F, 0, {"1000 2000 5 + 0 1", "1001 2000 5.4 + 0 1", "1002 2000 5 + 0 1"}},
      // A western track has no way.
      {CsvFilterRules, 1, 0, 0, {"-1000 2000 5 + 0 2", "-1100 2000 5 - 0 0"}},
      // A gap waits for the next point.
      {CsvFilterRules,
       0,
       0.3F,
       10,
       {"1000 2000 5 + 0 1", "1050 2000 5 - 1 50", "1052 2000 6 G 1 52", "1053 2000 7 + 0 1"}},
      // A log's first point needs its way and opens a segment; so does a gap, until the point is written.
      {LogFilterRules,
       2,
       0,
       10,
       {"1000 2000 5 - 1 0", "1002 2000 5 + 1 2", "1004 2000 5 + 0 2", "1015 2000 5 G 1 11",
        "1017 2000 5 + 0 2"}}};
  for (const Row& row : rows) {
    RunLimits limits;
    limits.MinDistM = row.minDist;
    limits.DepthStepM = row.depthStep;
    limits.MaxDistM = row.maxDist;
    PointFilter filter(row.rules, limits);
    for (const char* sounding : row.soundings) {
      SCOPED_TRACE(sounding);
      std::string x, y;
      float depth = 0, accDist = 0;
      char outcome = 0;
      int segment = 0;
      ASSERT_TRUE(std::istringstream(sounding) >> x >> y >> depth >> outcome >> segment >> accDist);
      ASSERT_EQ(filter.IsRepeat(x, y), outcome == 'r');
      if (outcome == 'r') continue;
      filter.Offer(x, y, depth);
      EXPECT_EQ(filter.AccDist, accDist);
      EXPECT_EQ(filter.SegmentCode, segment);
      EXPECT_EQ(filter.Gap && outcome != '-', outcome == 'G');
      EXPECT_EQ(filter.Select(), outcome != '-');
      if (outcome != '-') filter.PointWritten();
    }
  }
}

}  // namespace
}  // namespace sondrix
