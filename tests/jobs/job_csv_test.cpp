#include "jobs/job_csv.h"

#include "core/date_time.h"
#include "jobs/text_run.h"

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

TEST(JobCsv, AWholeRun) {
  TextRun test;
  test.settings.MaxDiff = "300";
  test.settings.DepthSm = "10";
  test.settings.TargetName = "озеро";
  test.window.spd = "5 km/h";  // of the run before
  EXPECT_EQ(test.ClickOn("a.csv", Head + Row("4105000") + Row("4105003", "31", "0", "Primary") +
                                      Row("4105003", "0.000000") + Row("4105003") + Row("4105010", "1.5") +
                                      "\n" + Row("4105400", "100.25") + Row("4105410", "10")),
            Report(4, 10));
  EXPECT_EQ(test.Summary(), "finished 10 8 7 4 0:1/1 2:6/5 озеро.txt озеро.plt озеро.mp озеро_bad.txt");
  EXPECT_EQ(test.Out("озеро.txt"),
            "56.135476,36.999896,9.24\r\n56.135476,36.999986,.56\r\n56.135476,37.003501,30.66\r\n"
            "56.135476,37.003592,3.15\r\n\r\n");
  EXPECT_EQ(test.Masked("озеро.plt"),
            "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n"
            "0,2,65535,\xEE\xE7\xE5\xF0\xEE,0,0,2,8421376\r\n4\r\n"
            "56.135476,36.999896,0,-30,,<clock>\r\n56.135476,36.999986,0,-1.5,,<clock>\r\n"
            "56.135476,37.003501,1,-100.2,,<clock>\r\n56.135476,37.003592,0,-10,,<clock>\r\n\r\n");
  const std::string mp = test.Out("озеро.mp");
  EXPECT_TRUE(mp.find("Name=\xEE\xE7\xE5\xF0\xEE\r\nTypeSet=Lowrance\r\n") != std::string::npos);
  EXPECT_TRUE(
      mp.ends_with("\r\n[POI]\r\nType=0x2900\r\nLabel=30.66 | 7\r\nData0=(56.135476,37.003501)\r\n[END]\r\n"
                   "\r\n[POI]\r\nType=0x1000\r\nLabel=3.15\r\nData0=(56.135476,37.003592)\r\n[END]\r\n\r\n"));
  EXPECT_EQ(test.Out("озеро_bad.txt"), "zero depth in line 3\r\n\r\n");
  EXPECT_EQ(test.settings.TargetName, "");
  EXPECT_EQ(test.window.CountLines(" line 3 - zero depth..."), 1);
  EXPECT_EQ(test.window.CountLines(" 0% line 0/9 dot 0"), 1);
  EXPECT_EQ(test.window.waited, 0) << "so short a run isn't held for the eye";
  EXPECT_EQ(test.window.spd, "");
}

TEST(JobCsv, ReportsAndRefusals) {
  const std::string rows = Head + Row("4105000") + Row("4105003") + Row("4105006", "9", "0", "Primary");
  const std::string semicolons = WithLineEnd(rows, ',', ";");
  const std::string longLine(1'000'000, 'x'), nuls(1000, '\0');
  const std::string noSeparator = " ! source file without delimiters ';' or ','...";
  const std::string mismatch = " ! error JobCsv: 13: Type mismatch";
  const std::string subscript = " ! error JobCsv: 9: Subscript out of range";
  const std::string overflow = " ! error JobCsv: 6: Overflow";
  const std::string short13 = Row("4105000").substr(0, Row("4105000").size() - 3) + "\n";
  CheckEnds("a.csv", {{rows, Report(2, 5)},
                      {rows.substr(0, rows.size() - 1), Report(2, 4)},
                      {WithLineEnd(rows, '\n', "\r\n"), Report(2, 5)},
                      {WithLineEnd(rows, '\n', "\r"), Report(0, 5)},
                      {semicolons, Report(2, 5)},
                      {rows, Report(1, 5), 0},
                      {rows + ",\n", Report(0, 6), 9},
                      {rows + "Primary\n", Report(2, 6)},
                      {"", Report(0, 0)},
                      {Head + longLine + "\n" + WithLineEnd(nuls, '\0', "1,") + "\n" + nuls + "\n" + rows,
                       Report(2, 9)},
                      // The head's only separator is the letter that CR LF costs.
                      {";x\r\n", noSeparator},
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

TEST(JobCsv, RowsOfThreeColumns) {
  struct Case {
    bool useDcm;
    const char *text, *list, *track;  // | is the line end of an output
  };
  const std::vector<Case> cases = {
      {false, "head,x\n55.1,-37.1,12\n55.2,37.2,3.456", "55.1,-37.1,12.00|55.2,37.2,3.456||",
       "8421376|2|55.1,-37.1,0,-12,,<clock>|55.2,37.2,0,-3.456,,<clock>||"},
      {false, "head;x\n55,1;37,10;4,2", "55,1,37,10,4.20||", "8421376|1|55,1,37,10,0,-4.2,,<clock>||"},
      // The correction comes with UseDcm, and so does the altitude in feet.
      {true, "head,x\n55.1,37.1,12", "55.1,37.1,12.25||", "8421376|1|55.1,37.1,0,-40.19,,<clock>||"},
      // Once in the mode, a wide row gives its first three columns, and the empty line at the end once more.
      {false, "head,x\n55.1,37.1,12\n55.2,37.2,3,,,,,,,,,,,\n",
       "55.1,37.1,12.00|55.2,37.2,3.00|55.2,37.2,3.00||",
       "8421376|3|55.1,37.1,0,-12,,<clock>|55.2,37.2,0,-3,,<clock>|55.2,37.2,0,-3,,<clock>||"}};
  for (const Case& row : cases) {
    TextRun test;
    test.settings.UseDcm = row.useDcm;
    test.settings.DepthSm = "25";
    test.ClickOn("a.txt", row.text, 9);
    EXPECT_EQ(test.Out("a.txt"), WithLineEnd(row.list, '|', "\r\n")) << row.text << test.window.att;
    const std::string track = test.Masked("a.plt");
    EXPECT_EQ(track.substr(track.find("8421376")), WithLineEnd(row.track, '|', "\r\n")) << row.text;
  }
}

TEST(JobCsv, ThresholdsSelect) {
  using Text = const char*;
  struct Case {
    Text distDiff, depthDiff, maxDiff;
    std::vector<std::pair<Text, Text>> soundings;  // metres to the east, feet
    std::string depths;                            // of the points
  };
  const std::vector<std::pair<Text, Text>> dip = {{"1000", "10"}, {"1001", "12"}, {"1002", "10"}};
  for (const Case& row : std::vector<Case>{
           // The sums grow until both reach their threshold; equal passes.
           {"5", "30", "0", {{"1000", "10"}, {"1003", "11"}, {"1004", "10"}, {"1005", "11"}}, "3.05 3.35 "},
           // A dip cancels out unless it was selected; then its way back counts as much.
           {"2", "30", "0", dip, "3.05 "},
           {"0", "30", "0", dip, "3.05 3.66 3.05 "},
           // A western track has no way.
           {"1", "0", "0", {{"-1000", "10"}, {"-1100", "11"}}, "3.05 "},
           // A gap waits for the next point.
           {"0", "30", "10", {{"1000", "10"}, {"1050", "10"}, {"1052", "12"}}, "3.05 3.66 | 3 "}}) {
    TextRun test;
    test.settings.DistDiff = row.distDiff;
    test.settings.DepthDiff = row.depthDiff;
    test.settings.MaxDiff = row.maxDiff;
    std::string text = Head;
    for (const auto& [x, feet] : row.soundings) text += Row(x, feet);
    test.ClickOn("a.csv", text);
    std::string depths;
    for (const std::string& line : test.OutLines("a.mp")) {
      if (line.starts_with("Label=")) depths += line.substr(6) + " ";
    }
    EXPECT_EQ(depths, row.depths);
  }
}

TEST(JobCsv, TimesAreTheClockPlusTheRowsTime) {
  TextRun test;
  const DateSeconds before = ClockNow();
  test.ClickOn("a.csv", Head + Row("4105000", "30", "86400500"));
  const DateSeconds after = ClockNow();
  const std::string line = test.OutLines("a.plt").at(6);
  DateSeconds now = before + 86400;
  while (!line.ends_with(",," + TrackDate(now) + "," + ClockTime(now)) && now <= after + 86400) ++now;
  EXPECT_LE(now, after + 86400) << line << ": half a second goes to the even one";
}

TEST(JobCsv, PauseStopAndProgress) {
  std::string text = Head;
  for (int i = 1; i <= 350; ++i) text += Row(std::to_string(4105000 + i));
  TextRun test;
  test.state.DefectPause = 7;
  test.window.onPump = [&](int pump) {
    if (pump == 2 || pump == 4) PauseClick(test.run);
    if (pump == 5) StopClick(test.run);
  };
  EXPECT_EQ(test.ClickOn("a.csv", text), Report(201, 201))
      << "the line reached, and what was selected so far";
  EXPECT_EQ(test.window.waited, 7 + 2 * 70) << "the click waits too; a stop ends a pause";
  EXPECT_EQ(test.window.CountLines(" 56% line 200/351 dot 200"), 1);
  EXPECT_EQ(test.window.CountLines(" * processing aborted by user"), 1);
  EXPECT_EQ(test.OutLines("a.txt").size(), 201U);
  EXPECT_EQ(test.Summary(), "stopped 201 201 201 201 2:201/201 a.txt a.plt a.mp");
}

TEST(JobCsv, NoWaitForALineThatNobodyCanRead) {
  std::string text = Head;
  for (int i = 0; i < 10'000; ++i) text += Row(std::to_string(i), "0.000000");
  TextRun test;
  const auto start = std::chrono::steady_clock::now();
  test.ClickOn("a.csv", text);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  EXPECT_LE(test.window.waited, 40 * seconds.count());
  EXPECT_EQ(test.OutLines("a_bad.txt").size(), 10'000U);
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
