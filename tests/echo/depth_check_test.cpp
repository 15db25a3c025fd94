#include "echo/depth_check.h"

#include "fault_in.h"
#include "test_run.h"

namespace sondrix {
namespace {

using Samples = std::vector<std::uint8_t>;

Samples Echoes(std::initializer_list<std::pair<int, int>> echoes, std::size_t count = 1920) {
  Samples samples(count);
  for (const auto& [row, strength] : echoes) samples[std::size_t(row)] = std::uint8_t(strength);
  return samples;
}

TEST(DepthSearch, TakesTheDeepestOfTheStrongestBelowItsTop) {
  const std::tuple<Samples, int, int> rows[] = {{Echoes({{400, 255}, {700, 255}}), 30, 700},
                                                {Echoes({{1820, 255}, {1819, 200}}), 30, 1819},
                                                {Echoes({{169, 200}, {300, 7}}), 199, 300},
                                                {Echoes({{170, 200}, {300, 7}}), 199, 170},
                                                {Echoes({{200, 200}, {300, 7}}), 200, 300},
                                                {Echoes({{31, 9}}, 131), -5, 0},
                                                {Echoes({{31, 9}}, 132), -5, 31}};
  for (const auto& [samples, sounderRow, row] : rows)
    EXPECT_EQ(StrongestRow(samples, SearchTopOf(sounderRow)), row) << sounderRow;
}

TEST(DepthCheck, ReportsAndLogs) {
  TestRun e;
  PrepareViews(e.pictures, Channel::Downscan, 1920);
  e.settings.UseBeep = e.settings.MakeGraf = true;
  Samples samples;
  DepthFrame frame{samples, Channel::Downscan, 0, 19.2F, 0, 4'000'000'000, 50, " 7%"};
  DepthState state;
  std::string badLog;
  std::ostringstream all;
  // The row of the echo in the frame before and in this one, a centimetre each; the sounder's depth; the
  // first frame believes it.
  const auto check = [&](int before, int row, float depthM, int counter) {
    samples = Echoes({{row, 200}});
    frame.Samples = samples;
    frame.DepthM = depthM;
    frame.FrameCounter = counter;
    state = {.PrevOwnRow = std::int16_t(before), .PrevOwnDepth = static_cast<float>(before / 100.0)};
    badLog.clear();
    e.pictures.SMPL.Clear();
    DepthCheck(e.run, state, frame, badLog);
    all << state.PrevOwnRow << ' ' << state.PrevOwnDepth << ' ' << state.SounderRow << ' ' << badLog;
    for (const PictureText& text : e.pictures.SMPL.Texts())
      all << text.x << ' ' << text.y << text.text << '\n';
  };
  for (const int before : {0, 1000})
    for (const int row : {700, 900, 989, 990, 1030, 1042, 1060, 1100, 1200, 1201, 1300})
      for (const float depthM : {0.0F, 3.05F, 10.3F, 10.4F, 10.41F})
        for (const int counter : {1, 2}) check(before, row, depthM, counter);
  EXPECT_TRUE(HasDigest(all.str() + e.Record(), 0x45254EA94C874310));
  check(1000, 1100, 10.3F, 2);
  EXPECT_EQ(badLog, " 7% offset  4000000000 - L10.3<>A10.04...\r\n");
  check(1000, 989, 10.4F, 2);
  EXPECT_EQ(badLog, " 7% fish? offset  4000000000 - L10.4<>A9.89...\r\n");

  // Sidescan is only saved, and no frame is searched without the views.
  badLog.clear();
  frame.Selected = Channel::Sidescan;
  frame.FrameCounter = 17;
  e.settings.SaveGraf = true;
  MakeFolders(e.OutPath("echo/"));
  DepthCheck(e.run, state, frame, badLog);
  e.settings.MakeGraf = false;
  state.OwnRow = 300;
  DepthCheck(e.run, state, frame, badLog);
  EXPECT_TRUE(badLog.empty() && e.window.att == " 7%" && e.HasOut("echo/17.bmp"));
  EXPECT_EQ(state.PrevOwnRow, 300);
  frame.ScaleM = 0.0000001F;
  EXPECT_EQ(FaultIn([&] { DepthCheck(e.run, state, frame, badLog); }), 6);
}

}  // namespace
}  // namespace sondrix
