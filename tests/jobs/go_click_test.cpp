#include "jobs/job_table.h"
#include "jobs/text_run.h"
#include "samples/echogram.h"

namespace sondrix {
namespace {

// Paths are below the run's folder, with | for the separator.
TEST(GoClick, SourcesTargetsAndNames) {
  // The source, the target, the end of the last line, the beeps and the table.
  const std::tuple<std::string, std::string, const char*, int, std::string> rows[] = {
      {"", "|out|", " * select source file...", 1, ""},
      {"|folder|", "|out|", " begin processing...", 0, ""},
      {"|nopoint", "|out|", " ! error GO: 5. Invalid procedure call or argument", 1, ""},
      {"|lake.v1.sl2", "|new|deep|", " * done", 0, "|new|deep|lake.v1.csv"},
      // The last part without a separator isn't made, only completed.
      {"|lake.v1.sl2", "|other", " ! error JobSl: 76. Path not found", 1, ""},
      {"|lake.v1.sl2", "|lake.v1.sl2|below|", " ! target folder access denied", 1, ""}};
  for (const auto& [source, target, end, beeps, csv] : rows) {
    TestRun test;
    const auto path = [&](std::string below) {
      std::ranges::replace(below, '|', PathSeparator);
      return below.empty() ? below : test.folder.string() + below;
    };
    test.Source("lake.v1.sl2", EchogramBytes(2, {Frame(2, 10)}));
    test.settings.Source = path(source);
    test.settings.TargetPath = path(target);
    EXPECT_TRUE(test.Click().ends_with(end)) << test.window.att;
    EXPECT_TRUE(test.window.IsEnabled("btnGO") && !test.window.busy && test.window.beeps == beeps) << end;
    EXPECT_TRUE(source.empty() || test.settings.TargetPath.back() == PathSeparator);
    EXPECT_TRUE(csv.empty() || std::filesystem::exists(path(csv)));
  }
}

// In the wait before the job an earlier output stays; a job itself ends before its first line.
TEST(GoClick, AnEndBeforeTheFirstLineStopsTheRun) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, {Frame(2, 10)})).Click();
  test.window.isToEnd = true;
  EXPECT_EQ(test.Click(), " * processing aborted by user");
  EXPECT_EQ(test.Summary(), "stopped 0 0 0 0");
  EXPECT_EQ(test.OutLines("lake.csv").size(), 1U);
  for (const char* name : {"a.csv", "a.log", "a.mp"}) {
    test.Source(name, BytesOf("55,37,5\r\n" + std::string(100, ' ')));
    test.window.att.clear();
    EXPECT_EQ(JobOf(name).run(test.run).end, RunEnd::Stopped);
    EXPECT_EQ(test.window.att, " * processing aborted by user") << name;
  }
}

// What the user chooses while a table is converted: the guard is of the table that the run reads, and not of
// the one that its next run would read.
TEST(GoClick, AChoiceDuringARunNeitherLosesItsSourceNorItsPoints) {
  const std::string table = "lat,lon,depth\n55.1,37.1,5\n";
  for (const bool namesItsOwn : {true, false}) {
    TestRun test;
    test.Source("out/other.txt", BytesOf("other")).Source("out/mine.txt", BytesOf(table));
    const std::string mine = test.settings.Source, other = test.OutPath("other.txt");
    test.settings.TargetName = "points";
    test.window.onPump = [&](int) {
      test.settings.Source = namesItsOwn ? other : test.OutPath("points.txt");
      if (namesItsOwn) test.settings.TargetName = "mine";
    };
    const std::string end = test.Click();
    EXPECT_EQ(ReadWhole(mine), table);
    EXPECT_EQ(end.ends_with("55: File already open"), namesItsOwn) << end;
    EXPECT_EQ(test.HasOut("points.txt"), !namesItsOwn);
  }
}

// Another file has the source's name by now, as after an editor's saving.
TEST(GoClick, ASourceThatWasReplacedIsNotOverwritten) {
  TestRun test;
  test.Source("out/mine.txt", BytesOf("lat,lon,depth\n55.1,37.1,5\n"));
  test.window.onPump = [&](int) {
    if (std::filesystem::exists(test.OutPath("old"))) return;
    std::filesystem::rename(test.settings.Source, test.OutPath("old"));
    test.Source("out/mine.txt", BytesOf("new"));
  };
  EXPECT_TRUE(test.Click().ends_with("55: File already open")) << test.window.att;
  EXPECT_EQ(test.Out("mine.txt"), "new");
}

TEST(Clicks, ChangeStateFieldsAndControls) {
  TestRun test;
  for (const Channel channel : {Channel::Primary, Channel::Sidescan}) {
    test.state.KnownSamples = 7;
    ChannelClick(test.run, channel);
    EXPECT_EQ(std::tuple(test.state.SelectedChannel, test.state.KnownSamples, test.state.ResyncMarker),
              std::tuple(channel, 0, channel == Channel::Primary ? 0x07800000U : 0x07800002U));
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
