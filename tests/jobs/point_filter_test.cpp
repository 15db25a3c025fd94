#include "jobs/point_filter.h"

#include "fault_in.h"

#include <gtest/gtest.h>
#include <sstream>

namespace sondrix {
namespace {

// Soundings are texts "x y depth outcome segment way": the outcome is r for a repeat, - for one passed over,
// + for a point, G for a point behind a gap; the segment is SegmentCode and the way AccDist before the
// selection.
struct Row {
  const char* name;
  const FilterRules& rules;
  RunLimits limits;
  std::vector<const char*> soundings;
};

RunLimits Limits(float minDist, float depthStep, float maxDist) {
  RunLimits limits;
  limits.MinDistM = minDist;
  limits.DepthStepM = depthStep;
  limits.MaxDistM = maxDist;
  return limits;
}

TEST(PointFilter, Tables) {
  const std::vector<Row> rows = {
      {"without thresholds all but repeats are points",
       CsvFilterRules,
       Limits(0, 0, 0),
       {"1000 2000 5 + 0 1", "1000 2000 6 r 0 0", "1000.0 2000 5 + 0 0", "9000 2000 5 + 0 8000"}},
      {"the sums grow until both reach their threshold; equal passes",
       CsvFilterRules,
       Limits(5, 0.25F, 0),
       {"1000 2000 5 + 0 6", "1003 2004 5 - 0 5", "1003 2005 5.25 + 0 6", "1003 2010 5.5 + 0 5"}},
      {"a dip cancels out unless it was selected",
       CsvFilterRules,
       Limits(2, 0.3F, 0),
       {"1000 2000 5 + 0 3", "1001 2000 5.4 - 0 1", "1002 2000 5 - 0 2"}},
      {"its way back counts as much",
       CsvFilterRules,
       Limits(0, 0.3F, 0),
       {"1000 2000 5 + 0 1", "1001 2000 5.4 + 0 1", "1002 2000 5 + 0 1"}},
      {"the way has one decimal, ties to even",
       CsvFilterRules,
       Limits(0, 0, 0),
       {"1000 2000 5 + 0 1", "1000.25 2000 5 + 0 0.2", "1001 2001 5 + 0 1.4"}},
      {"a western track has no way",
       CsvFilterRules,
       Limits(1, 0, 0),
       {"-1000 2000 5 + 0 2", "-1100 2000 5 - 0 0", "-1200 2100 6 - 0 0"}},
      {"a gap waits for the next point",
       CsvFilterRules,
       Limits(0, 0.3F, 10),
       {"1000 2000 5 + 0 1", "1050 2000 5 - 1 50", "1051 2000 5 - 1 51", "1052 2000 6 G 1 52",
        "1053 2000 7 + 0 1"}},
      {"a log's first point needs its way and opens a segment; so does a gap, until the point is written",
       LogFilterRules,
       Limits(2, 0, 10),
       {"1000 2000 5 - 1 0", "1002 2000 5 + 1 2", "1004 2000 5 + 0 2", "1015 2000 5 G 1 11",
        "1017 2000 5 + 0 2"}}};
  for (const Row& row : rows) {
    PointFilter filter(row.rules, row.limits);
    int points = 0;
    for (const char* sounding : row.soundings) {
      SCOPED_TRACE(std::string(row.name) + ", " + sounding);
      std::string x, y;
      float depth = 0, accDist = 0;
      char outcome = 0;
      int segment = 0;
      ASSERT_TRUE(std::istringstream(sounding) >> x >> y >> depth >> outcome >> segment >> accDist);
      const bool repeat = filter.IsRepeat(x, y);
      ASSERT_EQ(repeat, outcome == 'r');
      if (repeat) continue;
      filter.Offer(x, y, depth);
      EXPECT_EQ(filter.AccDist, accDist);
      EXPECT_EQ(filter.SegmentCode, segment);
      EXPECT_EQ(filter.Gap && outcome != '-', outcome == 'G');
      const bool selected = filter.Select();
      EXPECT_EQ(selected, outcome != '-');
      points += selected;
      if (selected) filter.PointWritten();
      EXPECT_EQ(filter.Selected, points);
    }
  }
}

TEST(PointFilter, Faults) {
  PointFilter filter(CsvFilterRules, RunLimits());
  EXPECT_EQ(FaultIn([&] { filter.Offer("", "2000", 1); }), 13);
  EXPECT_EQ(FaultIn([&] { filter.Offer("1000", "north", 1); }), 13);
  EXPECT_EQ(FaultIn([&] { filter.Offer("3000000000", "2000", 1); }), 6);
}

}  // namespace
}  // namespace sondrix
