#include "jobs/job_csv.h"

#include "core/date_time.h"
#include "jobs/text_run.h"
#include "samples/text_export.h"
#include "samples/three_column.h"

#include <chrono>

namespace sondrix {
namespace {

const std::string Head = "Channel,a,b,c,d,Depth,e,f,g,h,i,X,Y,Time\n";

std::string Row(const std::string& x, const std::string& feet = "30.000000", const std::string& time = "0",
                const std::string& channel = "Downscan") {
  return channel + ",1,2,3,4," + feet + ",6,7,8,9,10," + x + ",7560000," + time + "\n";
}

std::string Report(int points, int lines) {
  return " files successfully created, selected points " + std::to_string(points) + " from " +
         std::to_string(lines) + " lines";
}

std::string East(const std::vector<std::pair<const char*, const char*>>& soundings) {
  std::string text = Head;
  for (const auto& [metres, feet] : soundings) text += Row(metres, feet);
  return text;
}

TEST(JobCsv, LeavesWhatItLeft) {
  const std::string rows = Head + Row("4105000") + Row("4105003") + Row("4105006", "9", "0", "Primary");
  const std::string trip = rows + Row("4105009", "0.000000") + Row("4105009") + Row("4105016", "1.5") + "\n" +
                           Row("4105400", "100.25") + Row("4105410", "10");
  const std::string longLine(1'000'000, 'x'), nuls(1000, '\0');
  const std::string dip = East({{"1000", "10"}, {"1001", "12"}, {"1002", "10"}});
  const TableForm form, other{.CrLf = true, .Separator = ';', .Mixed = true};
  CheckRuns(
      "a.csv", true,
      {{TextExport(form), Report(751, 2009), 0xBB952574325D263F,
        "MaxDiff=40 DistDiff=2 DepthDiff=5 DepthSm=25"},
       {TextExport(other), Report(445, 6009), 0x5346499CCA14B1CE, "MaxDiff=40 DistDiff=3,5 DepthMP=0x10", 0},
       {ThreeColumn(form), Report(442, 603), 0xB6AB3BBF2829E9E9,
        "UseDcm=1 DepthSm=25 MaxDiff=40 DepthDiff=10 ViewOzi=1", 9},
       {ThreeColumn(other), Report(585, 603), 0xCDAB9E87D82732AA, "DistDiff=2 DepthSm=25", 9},
       {trip, Report(5, 11), 0x61C21E91ABE1BC43, "MaxDiff=300 DepthSm=10 TargetName=озеро ViewOzi=1"},
       {rows.substr(0, rows.size() - 1), Report(2, 4), 0x62452EBACEB77FF},
       {WithLineEnd(rows, '\n', "\r\n"), Report(2, 5), 0x473221A93F293606},
       {WithLineEnd(rows, '\n', "\r"), Report(0, 5), 0x7AE4A78340738891},
       {rows + ",\n", Report(0, 6), 0x16796285381F78CA, "", 9},
       {rows + "Primary\n", Report(2, 6), 0x9448A7FB4C194AF0},
       {"", Report(0, 0), 0x178509B438763673},
       {Head + longLine + "\n" + WithLineEnd(nuls, '\0', "1,") + "\n" + nuls + "\n" + rows, Report(2, 9),
        0x908B5BA28960F722},
       {"head,x\n55.1,-37.1,12\n55.2,37.2,3.456", Report(2, 3), 0xA2AFE39378D4308E},
       // Once in the mode, a wide row gives its first three columns, and the empty line at the end once more.
       {"head,x\n55.1,37.1,12\n55.2,37.2,3,,,,,,,,,,,\n", Report(3, 4), 0x59BB82E31D854F6C},
       // The sums grow until both reach their threshold; equal passes.
       {East({{"1000", "10"}, {"1003", "11"}, {"1004", "10"}, {"1005", "11"}}), Report(2, 6),
        0x3B2BDCE15B5C2287, "DistDiff=5 DepthDiff=30"},
       // A dip cancels out unless it was selected; then its way back counts as much.
       {dip, Report(1, 5), 0x1B523A0C9B43C4EA, "DistDiff=2 DepthDiff=30"},
       {dip, Report(3, 5), 0x601C59D3EEB6DA5E, "DepthDiff=30"},
       // Way and change of depth are rounded; a tie goes to the even one.
       {East({{"1000", "10"}, {"1000.97", "10"}}), Report(2, 4), 0xEA75BF293CF977C9, "DistDiff=1"},
       {East({{"1000", "10"}, {"1000.93", "10"}}), Report(1, 4), 0xB36DB4526B0ED9B, "DistDiff=1"},
       {East({{"1000", "10"}, {"1000.25", "10"}}), Report(1, 4), 0xB36DB4526B0ED9B, "DistDiff=0,3"},
       {East({{"1000", "10"}, {"1000.25", "10"}}), Report(2, 4), 0x14C2D83CA2D9809E, "DistDiff=0,2"},
       {"h,\n55,37,3\n55,38,3.0006", Report(2, 3), 0xB1E4B3A77603AD82, "DepthDiff=0,1"},
       {"h,\n55,37,3\n55,38,3.0004", Report(1, 3), 0x85C8C842AF9D82AE, "DepthDiff=0,1"},
       {"h,\n55,37,3\n55,38,3.0625", Report(1, 3), 0x85C8C842AF9D82AE, "DepthDiff=6,25"},
       // A western track has no way.
       {East({{"-1000", "10"}, {"-1100", "11"}}), Report(1, 4), 0x308C701E0BE62743, "DistDiff=1"},
       // A gap waits for the next point.
       {East({{"1000", "10"}, {"1050", "10"}, {"1052", "12"}}), Report(2, 5), 0x75671FFEDF64EE8A,
        "DepthDiff=30 MaxDiff=10"}});
}

TEST(JobCsv, Refusals) {
  const std::string noSeparator = " ! source file without delimiters ';' or ','...";
  const std::string mismatch = " ! error JobCsv: 13: Type mismatch";
  const std::string subscript = " ! error JobCsv: 9: Subscript out of range";
  const std::string overflow = " ! error JobCsv: 6: Overflow";
  const std::string short13 = Row("4105000").substr(0, Row("4105000").size() - 3) + "\n";
  CheckRuns("a.csv", true,
            {{";x\r\n", noSeparator},  // the head's only separator is the letter that CR LF costs
             {"no separator\nat all\n", noSeparator},
             {"a,b\n", subscript},
             {Head + short13, subscript},
             {Head + "Downscan,1,2\nDownscan,1\n", mismatch},
             {Head + "55,37,2\n55,37\n", subscript},
             {Head + Row("east"), mismatch},
             {Head + Row("4105000", ""), mismatch},
             {Head + Row("4105000", "30", "noon"), mismatch},
             {Head + Row("3000000000"), overflow},
             {Head + Row("4105000", "1e39"), overflow},
             {Head + Row("4105000", "30", "1e15"), overflow},
             {Head + "55.1,x,3\n", mismatch}});
}

// The clock's time and the row's are added; half a second goes to the even one.
TEST(JobCsv, PauseStopProgressAndTimes) {
  std::string text = Head;
  for (int i = 1; i <= 350; ++i) text += Row(std::to_string(4105000 + i), "30", "86400500");
  TextRun test;
  test.state.DefectPause = 7;
  test.window.onPump = [&](int pump) {
    if (pump == 2 || pump == 4) PauseClick(test.run);
    if (pump == 5) StopClick(test.run);
  };
  const DateSeconds before = ClockNow() + 86400;
  EXPECT_EQ(test.ClickOn("a.csv", text), Report(201, 201)) << "what was selected so far";
  EXPECT_EQ(test.window.waited, 7 + 2 * 70) << "the click waits too; a stop ends a pause";
  EXPECT_EQ(test.window.CountLines(" 56% line 200/351 dot 200"), 1);
  EXPECT_EQ(test.Summary(), "stopped 201 201 201 201 2:201/201 a.txt a.plt a.mp");
  const std::string line = test.OutLines("a.plt").at(6);
  DateSeconds time = before;
  while (!line.ends_with(",," + TrackDate(time) + "," + ClockTime(time)) && time < before + 60) ++time;
  EXPECT_LT(time, before + 60) << line;
}

TEST(JobCsv, NoWaitForALineThatNobodyCanRead) {
  std::string text = Head;
  for (int i = 0; i < 10'000; ++i) text += Row(std::to_string(i), "0.000000");
  TextRun test;
  const auto start = std::chrono::steady_clock::now();
  test.ClickOn("a.csv", text);
  EXPECT_LE(std::chrono::milliseconds(25 * test.window.waited), std::chrono::steady_clock::now() - start);
}

TEST(JobCsv, ASourceThatChanges) {
  TextRun test;
  test.window.onPump = [&](int) { std::filesystem::resize_file(test.settings.Source, 5); };
  EXPECT_EQ(test.ClickOn("a.csv", Head + std::string(1'000'000, ',')),
            " ! error JobCsv: 62: Input past end of file");
  test.window.onPump = [&](int) { OutputFile(test.settings.Source).Write(Head + Row("4106000")); };
  EXPECT_EQ(test.ClickOn("a.csv", Head + Row("4105000") + Row("4105010")),
            " ! error JobCsv: 57: Device I/O error");
  EXPECT_TRUE(std::filesystem::is_empty(test.folder / "out"));
}

}  // namespace
}  // namespace sondrix
