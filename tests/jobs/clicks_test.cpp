#include "jobs/clicks.h"

#include "test_run.h"

namespace sondrix {
namespace {

TEST(Clicks, ChangeStateFieldsAndControls) {
  TestRun test;
  for (const Channel channel : {Channel::Primary, Channel::Sidescan}) {
    test.state.KnownSamples = 7;
    ChannelClick(test.run, channel);
    EXPECT_EQ(std::tuple(test.state.SelectedChannel, test.state.KnownSamples, test.state.ResyncMarker),
              std::tuple(channel, 0, channel == Channel::Primary ? 0x07800000U : 0x07800002U));
  }
  for (const bool pauses : {true, false}) {
    PauseClick(test.run);
    EXPECT_EQ(test.state.PauseFlag, pauses);
    EXPECT_EQ(test.window.captions["RunSet"], pauses ? ">>" : "II");
  }
  // Cropping, the pictures and their saving before; what is left of the latter two, and the fields shown
  // anew.
  const std::tuple<bool, bool, bool, bool, bool, std::vector<std::string>> rows[] = {
      {false, true, true, true, true, {}},
      {true, true, false, false, false, {"MakeGraf"}},
      {true, true, true, false, false, {"MakeGraf", "SaveGraf"}},
      {true, false, true, false, true, {}}};
  for (const auto& [cuts, draws, saves, drawsThen, savesThen, shown] : rows) {
    TestRun click;
    std::tie(click.settings.MakeCut, click.settings.MakeGraf, click.settings.SaveGraf) =
        std::tuple(cuts, draws, saves);
    CutClick(click.run);
    EXPECT_EQ(std::pair(click.settings.MakeGraf, click.settings.SaveGraf), std::pair(drawsThen, savesThen));
    EXPECT_EQ(click.window.shown, shown);
    const bool isOff = cuts && draws;
    EXPECT_EQ(click.window.IsEnabled("SaveGraf") || click.window.IsEnabled("MakeScrn"), !isOff);
  }
}

}  // namespace
}  // namespace sondrix
