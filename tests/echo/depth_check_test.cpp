#include "echo/depth_check.h"

#include "core/files.h"
#include "echo/echo_run.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

Samples Echoes(std::initializer_list<std::pair<int, int>> echoes, std::size_t count = 1920) {
  Samples samples(count);
  for (const auto& [row, strength] : echoes)
    samples[static_cast<std::size_t>(row)] = static_cast<std::uint8_t>(strength);
  return samples;
}

TEST(DepthSearch, OpensAboveTheLastBottom) {
  const struct {
    std::int32_t sounderRow, top;
  } rows[] = {{199, 169}, {200, 200}, {61, 31}, {60, 30}, {0, 30}, {-5, 30}, {2000000, 200}};
  for (const auto& row : rows) EXPECT_EQ(SearchTopOf(row.sounderRow), row.top) << row.sounderRow;
}

TEST(DepthSearch, TakesTheDeepestOfTheStrongest) {
  const struct {
    Samples samples;
    int top, row;
  } rows[] = {
      {Echoes({{400, 255}, {700, 255}}), 30, 700},
      {Echoes({{1820, 255}, {700, 200}}), 30, 700},
      {Echoes({{1819, 1}}), 30, 1819},
      {Echoes({{169, 200}, {300, 7}}), 169, 300},
      {Echoes({{170, 200}, {300, 7}}), 169, 170},
      {Echoes({}), 30, 0},
      {Echoes({{31, 9}}, 131), 30, 0},
      {Echoes({{31, 9}}, 132), 30, 31},
      {Echoes({{31, 9}}, 130), 200, 0},
      {Samples(), 30, 0},
  };
  for (const auto& row : rows) EXPECT_EQ(StrongestRow(row.samples, row.top), row.row);
}

TEST(DepthLimits, SlowsJumps) {
  const struct {
    float own, prev, limited;
  } rows[] = {{10.30F, 10, 10.30F}, {10.60F, 10, 10.30F}, {11, 10, 10.04F},   {13, 10, 10.0133333F},
              {9, 10, 9.96F},       {10, 10, 10},         {7, 10, 9.9866667F}};
  for (const auto& row : rows) EXPECT_FLOAT_EQ(LimitDepth(row.own, row.prev), row.limited) << row.own;
}

TEST(DepthLimits, FirstFrameBelievesTheSounder) {
  DepthState state;
  const Samples samples = Echoes({{700, 200}});
  DepthFrame frame{.Samples = samples, .Channel = 2, .DepthM = 3.05F, .ScaleM = 30.48F, .FrameCounter = 1};
  DepthResult result = CompareDepths(state, frame, true);
  EXPECT_EQ(result.OwnDepth, 3.05F);
  EXPECT_EQ(result.DepthDelta, 0);
  EXPECT_EQ(state.OwnRow, 700);
  EXPECT_EQ(state.SounderRow, 192);
  frame.FrameCounter = 2;
  result = CompareDepths(state, frame, true);
  EXPECT_EQ(result.OwnDepth, 11.11F);
  EXPECT_EQ(result.DepthDelta, 8.06F);
  state.PrevOwnRow = 700;
  state.PrevOwnDepth = 10;
  result = CompareDepths(state, frame, true);  // a jump of 1.11 m: 4 % of it
  EXPECT_EQ(result.OwnDepth, 10.04F);
  EXPECT_EQ(state.OwnRow, 632);
  result = CompareDepths(state, frame, false);  // the row stays, and with it its depth
  EXPECT_EQ(result.OwnDepth, 10.03F);
  frame.Channel = 5;
  EXPECT_EQ(CompareDepths(state, frame, true).OwnDepth, 3.05F);
  EXPECT_EQ(state.OwnRow, 700);
  frame.ScaleM = 0.0000001F;
  EXPECT_EQ(FaultIn([&] { CompareDepths(state, frame, true); }), 6);
}

TEST(DepthLimits, Defects) {
  const struct {
    float depthM, delta;
    std::int32_t level;
    bool defect;
  } rows[] = {{12, 0.5F, 50, false}, {12, -0.5F, 50, false}, {12, -0.51F, 50, true},
              {12, -12, 1000, true}, {0, 5, 1, false},       {12, 0.02F, 1, true}};
  for (const auto& row : rows)
    EXPECT_EQ(IsDefect({.DepthM = row.depthM, .DefectLevel = row.level}, row.delta), row.defect) << row.delta;
  EXPECT_FALSE(IsFish({.OwnRow = 40, .PrevOwnRow = 30}, -0.51F));
  EXPECT_FALSE(IsFish({.OwnRow = 41, .PrevOwnRow = 30}, -0.5F));
  EXPECT_TRUE(IsFish({.OwnRow = 41, .PrevOwnRow = 30}, -0.51F));
}

TEST(DepthCheck, ReportsAndLogs) {
  EchoRun e;
  DepthState state;
  std::string badLog;
  Samples samples = Echoes({{700, 200}});
  DepthFrame frame{.Samples = samples,
                   .Channel = 2,
                   .DepthM = 12.5F,
                   .ScaleM = 30.48F,
                   .FrameCounter = 2,
                   .FilePosition = 3000000000,
                   .DefectLevel = 50,
                   .Progress = " 7%  scan 2 ^00:00:01"};
  e.settings.UseBeep = true;
  DepthCheck(e.run, state, frame, badLog);
  const std::string line = " 7%  scan 2 ^00:00:01 fish? offset  3000000000 - L12.5<>A11.11...";
  EXPECT_EQ(e.window.att, line);
  EXPECT_EQ(badLog, line + "\r\n");
  EXPECT_EQ(e.window.beeps, 1);
  EXPECT_EQ(e.window.pumps, 1);
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
  EchoRun e;
  const auto folder = std::filesystem::temp_directory_path() / "sondrix_depth_check";
  std::filesystem::create_directories(folder / "echo");
  e.settings.TargetPath = folder.string() + PathSeparator;
  e.settings.SaveGraf = true;
  DepthState state{.PrevOwnRow = 300};
  std::string badLog;
  const Samples samples = Echoes({{700, 200}});
  const DepthFrame frame{
      .Samples = samples, .Channel = 5, .DepthM = 9, .ScaleM = 30, .FrameCounter = 17, .Progress = " 1%"};
  DepthCheck(e.run, state, frame, badLog);
  EXPECT_EQ(e.window.att, " 1%");
  EXPECT_EQ(badLog, "");
  EXPECT_TRUE(e.pictures.Curve.Lines.empty());
  EXPECT_TRUE(std::filesystem::exists(folder / "echo" / "17.bmp"));
  std::filesystem::remove_all(folder);
  EXPECT_EQ(FaultIn([&] { DepthCheck(e.run, state, frame, badLog); }), 76);
}

}  // namespace
}  // namespace sondrix
