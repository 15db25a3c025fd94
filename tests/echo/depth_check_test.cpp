#include "echo/depth_check.h"

#include "fault_in.h"
#include "test_run.h"

#include <map>

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

Samples Echoes(std::initializer_list<std::pair<int, int>> echoes, std::size_t count = 1920) {
  Samples samples(count);
  for (const auto& [row, strength] : echoes) samples[std::size_t(row)] = std::uint8_t(strength);
  return samples;
}

TEST(DepthSearch, TakesTheDeepestOfTheStrongestBelowItsTop) {
  for (const auto& [sounderRow, top] :
       std::map<int, int>{{199, 169}, {200, 200}, {61, 31}, {60, 30}, {0, 30}, {-5, 30}, {2000000, 200}})
    EXPECT_EQ(SearchTopOf(sounderRow), top) << sounderRow;
  const std::tuple<Samples, int, int> rows[] = {{Echoes({{400, 255}, {700, 255}}), 30, 700},
                                                {Echoes({{1820, 255}, {700, 200}}), 30, 700},
                                                {Echoes({{1819, 1}}), 30, 1819},
                                                {Echoes({{169, 200}, {300, 7}}), 169, 300},
                                                {Echoes({{170, 200}, {300, 7}}), 169, 170},
                                                {Echoes({}), 30, 0},
                                                {Echoes({{31, 9}}, 131), 30, 0},
                                                {Echoes({{31, 9}}, 132), 30, 31},
                                                {Echoes({{31, 9}}, 130), 200, 0},
                                                {Samples(), 30, 0}};
  for (const auto& [samples, top, row] : rows) EXPECT_EQ(StrongestRow(samples, top), row) << top;
}

TEST(DepthLimits, SlowJumps) {
  const std::tuple<float, float, float> rows[] = {
      {10.30F, 10, 10.30F}, {10.60F, 10, 10.30F}, {11, 10, 10.04F},   {13, 10, 10.0133333F},
      {9, 10, 9.96F},       {10, 10, 10},         {7, 10, 9.9866667F}};
  for (const auto& [own, prev, limited] : rows) EXPECT_FLOAT_EQ(LimitDepth(own, prev), limited) << own;
}

TEST(DepthLimits, FirstFrameBelievesTheSounder) {
  DepthState state;
  const Samples samples = Echoes({{700, 200}});
  DepthFrame frame{.Samples = samples, .Channel = 2, .DepthM = 3.05F, .ScaleM = 30.48F, .FrameCounter = 1};
  const auto expect = [&](float depth, float delta, int row, bool search) {
    const DepthResult result = CompareDepths(state, frame, search);
    EXPECT_EQ(std::tuple(result.OwnDepth, result.DepthDelta, state.OwnRow), std::tuple(depth, delta, row));
    EXPECT_EQ(state.SounderRow, 192);
  };
  expect(3.05F, 0, 700, true);
  frame.FrameCounter = 2;
  expect(11.11F, 8.06F, 700, true);
  state.PrevOwnRow = 700;
  state.PrevOwnDepth = 10;
  expect(10.04F, 6.99F, 632, true);   // a jump of 1.11 m: 4 % of it
  expect(10.03F, 6.98F, 632, false);  // the row stays, and with it its depth
  frame.Channel = 5;
  expect(3.05F, 0, 700, true);
  frame.ScaleM = 0.0000001F;
  EXPECT_EQ(FaultIn([&] { CompareDepths(state, frame, true); }), 6);
}

TEST(DepthLimits, DefectsAndFish) {
  const std::tuple<float, float, int, bool> defects[] = {{12, 0.5F, 50, false},  {12, -0.5F, 50, false},
                                                         {12, -0.51F, 50, true}, {12, -12, 1000, true},
                                                         {0, 5, 1, false},       {12, 0.02F, 1, true}};
  for (const auto& [depthM, delta, level, defect] : defects)
    EXPECT_EQ(IsDefect({.DepthM = depthM, .DefectLevel = level}, delta), defect) << delta;
  EXPECT_FALSE(IsFish({.OwnRow = 40, .PrevOwnRow = 30}, -0.51F));
  EXPECT_FALSE(IsFish({.OwnRow = 41, .PrevOwnRow = 30}, -0.5F));
  EXPECT_TRUE(IsFish({.OwnRow = 41, .PrevOwnRow = 30}, -0.51F));
}

TEST(DepthCheck, ReportsAndLogs) {
  TestRun e;
  DepthState state;
  std::string badLog;
  Samples samples = Echoes({{700, 200}});
  DepthFrame frame{samples, 2, 12.5F, 30.48F, 2, 3000000000, 50, " 7%  scan 2 ^00:00:01"};
  e.settings.UseBeep = e.settings.MakeGraf = true;
  DepthCheck(e.run, state, frame, badLog);
  const std::string line = " 7%  scan 2 ^00:00:01 fish? offset  3000000000 - L12.5<>A11.11...";
  EXPECT_EQ(e.window.att, line);
  EXPECT_EQ(badLog, line + "\r\n");
  EXPECT_TRUE(e.window.beeps == 1 && e.window.pumps == 1);
  EXPECT_EQ(state.PrevOwnRow, 700);
  EXPECT_EQ(state.PrevOwnDepth, 11.11F);
  ASSERT_EQ(e.pictures.SMPL.Texts().size(), 3u);
  EXPECT_EQ(e.pictures.SMPL.Texts()[1].text, " 11.11 ");
  EXPECT_EQ(e.pictures.Curve.Lines.size(), 2u);

  e.window.onPump = [&](int) { e.settings.MakeGraf = false; };  // holds from the next frame on
  badLog.clear();
  frame.DepthM = 11.2F;
  DepthCheck(e.run, state, frame, badLog);
  EXPECT_EQ(badLog, " 7%  scan 2 ^00:00:01 offset  3000000000 - L11.2<>A11.11...\r\n");
  EXPECT_EQ(e.pictures.SMPL.Texts().size(), 4u);
  samples = Echoes({{300, 200}});
  DepthCheck(e.run, state, frame, badLog);
  EXPECT_EQ(e.window.att, frame.Progress);
  EXPECT_EQ(e.window.pumps, 2);
  EXPECT_EQ(state.PrevOwnRow, 700);
}

TEST(DepthCheck, SidescanOnlySavesPictures) {
  TestRun e;
  MakeFolders(e.OutPath("echo/"));
  e.settings.MakeGraf = e.settings.SaveGraf = true;
  DepthState state{.PrevOwnRow = 300};
  std::string badLog;
  const Samples samples = Echoes({{700, 200}});
  const DepthFrame frame{samples, 5, 9, 30, 17, 0, 1, " 1%"};
  DepthCheck(e.run, state, frame, badLog);
  EXPECT_EQ(e.window.att, " 1%");
  EXPECT_TRUE(badLog.empty() && e.pictures.Curve.Lines.empty() && e.HasOut("echo/17.bmp"));
  std::filesystem::remove_all(e.OutPath("echo"));
  EXPECT_EQ(FaultIn([&] { DepthCheck(e.run, state, frame, badLog); }), 76);
}

}  // namespace
}  // namespace sondrix
