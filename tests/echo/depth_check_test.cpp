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
  for (const auto& [sounderRow, top] : std::map<int, int>{{199, 169}, {200, 200}, {61, 31}, {-5, 30}})
    EXPECT_EQ(SearchTopOf(sounderRow), top) << sounderRow;
  const std::tuple<Samples, int, int> rows[] = {{Echoes({{400, 255}, {700, 255}}), 30, 700},
                                                {Echoes({{1820, 255}, {1819, 200}}), 30, 1819},
                                                {Echoes({{169, 200}, {300, 7}}), 169, 300},
                                                {Echoes({{170, 200}, {300, 7}}), 169, 170},
                                                {Echoes({}), 30, 0},
                                                {Echoes({{31, 9}}, 131), 30, 0},
                                                {Echoes({{31, 9}}, 132), 30, 31}};
  for (const auto& [samples, top, row] : rows) EXPECT_EQ(StrongestRow(samples, top), row) << top;
}

TEST(DepthCheck, ReportsAndLogs) {
  const struct {
    int prevRow, row;  // of the echo in the frame before and in this one; a row is a centimetre
    float depthM;      // the sounder's
    int counter;
    const char *word, *depths;
    std::size_t texts;  // on the curve: the difference, and the depths beside a defect
  } rows[] = {
      {0, 700, 3.05F, 1, " offset", "L3.05<>A3.05", 1},  // the first frame believes the sounder
      {0, 700, 3.05F, 2, " offset", "L3.05<>A7", 3},
      {1000, 1030, 10.3F, 2, " offset", "L10.3<>A10.3", 1},
      {1000, 1060, 10.3F, 2, " offset", "L10.3<>A10.3", 1},  // half of the jump
      {1000, 1100, 10.3F, 2, " offset", "L10.3<>A10.04", 1},
      {1000, 1300, 10.3F, 2, " offset", "L10.3<>A10.01", 1},
      {1000, 900, 0, 2, " offset", "L0<>A9.96", 1},
      {1000, 990, 10.4F, 2, " offset", "L10.4<>A9.9", 1},
      {1000, 990, 10.41F, 2, " offset", "L10.41<>A9.9", 3},
      {1000, 989, 10.4F, 2, " fish? offset", "L10.4<>A9.89", 3},
  };
  TestRun e;
  PrepareViews(e.pictures, Channel::Downscan, 1920);
  e.settings.UseBeep = e.settings.MakeGraf = true;
  Samples samples;
  DepthFrame frame{samples, Channel::Downscan, 0, 19.2F, 0, 4'000'000'000, 50, " 7%"};
  DepthState state;
  std::string badLog;
  std::ostringstream all;
  for (const auto& row : rows) {
    samples = Echoes({{row.row, 200}});
    frame.Samples = samples;
    frame.DepthM = row.depthM;
    frame.FrameCounter = row.counter;
    state = {.PrevOwnRow = std::int16_t(row.prevRow),
             .PrevOwnDepth = static_cast<float>(row.prevRow / 100.0)};
    badLog.clear();
    e.pictures.SMPL.Clear();
    DepthCheck(e.run, state, frame, badLog);
    all << state.PrevOwnRow << ' ' << state.PrevOwnDepth << ' ' << state.SounderRow << '\n' << e.Record();
    EXPECT_EQ(badLog, std::string(" 7%") + row.word + "  4000000000 - " + row.depths + "...\r\n");
    EXPECT_EQ(e.pictures.SMPL.Texts().size(), row.texts) << row.depths;
  }
  EXPECT_TRUE(HasDigest(all.str(), 0x6EF66E67FD257F3C));

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
