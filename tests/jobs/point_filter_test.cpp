#include "jobs/point_filter.h"

#include "fault_in.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

struct Sounding {
  const char *x, *y;
  float depth;
  char outcome;   // r: a repeat, -: passed over, +: a point, G: a point behind a gap
  int segment;    // SegmentCode as the point or the sounding has it
  float accDist;  // before the selection
};

struct Row {
  const char* name;
  const FilterRules& rules;
  float minDist, depthStep, maxDist;
  std::vector<Sounding> soundings;
};

TEST(PointFilter, Tables) {
  const std::vector<Row> rows = {
      {"without thresholds all but repeats are points",
       CsvFilterRules,
       0,
       0,
       0,
       {{"1000", "2000", 5, '+', 0, 1},
        {"1000", "2000", 6, 'r', 0, 0},
        {"1000.0", "2000", 5, '+', 0, 0},
        {"9000", "2000", 5, '+', 0, 8000}}},
      {"the sums grow until both reach their threshold; equal passes",
       CsvFilterRules,
       5,
       0.25F,
       0,
       {{"1000", "2000", 5, '+', 0, 6},
        {"1003", "2004", 5, '-', 0, 5},
        {"1003", "2005", 5.25F, '+', 0, 6},
        {"1003", "2010", 5.5F, '+', 0, 5}}},
      {"a dip cancels out unless it was selected",
       CsvFilterRules,
       2,
       0.3F,
       0,
       {{"1000", "2000", 5, '+', 0, 3}, {"1001", "2000", 5.4F, '-', 0, 1}, {"1002", "2000", 5, '-', 0, 2}}},
      {"its way back counts as much",
       CsvFilterRules,
       0,
       0.3F,
       0,
       {{"1000", "2000", 5, '+', 0, 1}, {"1001", "2000", 5.4F, '+', 0, 1}, {"1002", "2000", 5, '+', 0, 1}}},
      {"the way has one decimal, ties to even",
       CsvFilterRules,
       0,
       0,
       0,
       {{"1000", "2000", 5, '+', 0, 1},
        {"1000.25", "2000", 5, '+', 0, 0.2F},
        {"1001", "2001", 5, '+', 0, 1.4F}}},
      {"a western track has no way",
       CsvFilterRules,
       1,
       0,
       0,
       {{"-1000", "2000", 5, '+', 0, 2}, {"-1100", "2000", 5, '-', 0, 0}, {"-1200", "2100", 6, '-', 0, 0}}},
      {"a gap waits for the next point",
       CsvFilterRules,
       0,
       0.3F,
       10,
       {{"1000", "2000", 5, '+', 0, 1},
        {"1050", "2000", 5, '-', 1, 50},
        {"1051", "2000", 5, '-', 1, 51},
        {"1052", "2000", 6, 'G', 1, 52},
        {"1053", "2000", 7, '+', 0, 1}}},
      {"a log's first point needs its way and opens a segment; so does a gap, until the point is written",
       LogFilterRules,
       2,
       0,
       10,
       {{"1000", "2000", 5, '-', 1, 0},
        {"1002", "2000", 5, '+', 1, 2},
        {"1004", "2000", 5, '+', 0, 2},
        {"1015", "2000", 5, 'G', 1, 11},
        {"1017", "2000", 5, '+', 0, 2}}},
  };
  for (const Row& row : rows) {
    RunLimits limits;
    limits.MinDistM = row.minDist;
    limits.DepthStepM = row.depthStep;
    limits.MaxDistM = row.maxDist;
    PointFilter filter(row.rules, limits);
    int points = 0;
    for (const Sounding& sounding : row.soundings) {
      SCOPED_TRACE(std::string(row.name) + ", " + sounding.x + " " + sounding.y);
      const bool repeat = filter.IsRepeat(sounding.x, sounding.y);
      ASSERT_EQ(repeat, sounding.outcome == 'r');
      if (repeat) continue;
      filter.Offer(sounding.x, sounding.y, sounding.depth);
      EXPECT_EQ(filter.AccDist, sounding.accDist);
      EXPECT_EQ(filter.SegmentCode, sounding.segment);
      EXPECT_EQ(filter.Gap && sounding.outcome != '-', sounding.outcome == 'G');
      const bool selected = filter.Select();
      EXPECT_EQ(selected, sounding.outcome != '-');
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
