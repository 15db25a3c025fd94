#include "jobs/job_table.h"
#include "jobs/text_run.h"
#include "samples/echogram.h"

#include <algorithm>

namespace sondrix {
namespace {

// Paths are below the run's folder, with | for the separator.
TEST(GoClick, SourcesTargetsAndNames) {
  struct Row {
    std::string source, target, name, end;
    int beeps;
    std::string csv;
  };
  for (const Row& row : std::vector<Row>{
           {"", "out|", "", " * select source file...", 1, ""},
           {"|folder|", "out|", "", " begin processing...", 0, ""},
           {"|nopoint", "out|", "", " ! error GO: 5. Invalid procedure call or argument", 1, ""},
           {"|lake.v1.sl2", "out|", "", " * done", 0, "out|lake.v1.csv"},
           {"|lake.v1.sl2", "new|deep|", "mine", " * done", 0, "new|deep|mine.csv"},
           // The last part without a separator isn't made, only completed.
           {"|lake.v1.sl2", "other", "", " ! error JobSl: 76. Path not found", 1, ""},
           {"|lake.v1.sl2", "lake.v1.sl2|below|", "", " ! target folder access denied", 1, ""}}) {
    SCOPED_TRACE(row.source + " to " + row.target);
    TestRun test;
    const auto path = [&](std::string below) {
      std::replace(below.begin(), below.end(), '|', PathSeparator);
      return test.folder.string() + below;
    };
    test.Source("lake.v1.sl2", EchogramBytes(2, {Frame(2, 10)}));
    test.settings.Source = row.source.empty() ? "" : path(row.source);
    test.settings.TargetPath = path("|" + row.target);
    test.settings.TargetName = row.name;
    EXPECT_TRUE(test.Click().ends_with(row.end)) << test.window.att;
    EXPECT_TRUE(test.window.IsEnabled("btnGO") && !test.window.busy);
    EXPECT_EQ(test.window.beeps, row.beeps);
    EXPECT_TRUE(row.source.empty() || test.settings.TargetPath.back() == PathSeparator);
    if (row.csv.empty()) continue;
    EXPECT_TRUE(std::filesystem::exists(path("|" + row.csv)));
    EXPECT_EQ(test.settings.TargetName, row.name);
    EXPECT_EQ(test.settings.DepthMP, "0x1000");
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

}  // namespace
}  // namespace sondrix
