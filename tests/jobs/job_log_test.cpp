#include "jobs/job_log.h"

#include "jobs/text_run.h"

namespace sondrix {
namespace {

const std::string Done = " files successfully created, selected points ";
const std::string Corrupt = " ! log-file is corrupted, there are missing or incomplete lines";
const std::string Mismatch = " ! error JobLog: 13: Type mismatch";
const std::string Date = "$GPRMC,120000,A,,,,,,,051126,,*00\n";

// A fix on the parallel of 55 degrees 10 minutes, at 37 degrees and so many minutes.
std::string Fix(const std::string& minutes, const std::string& time = "120000",
                const std::string& quality = "1", const std::string& satellites = "08") {
  return "$GPGGA," + time + ",5510.0000,N,037" + minutes + ",E," + quality + "," + satellites +
         ",1.1,,M,,M,,*00\n";
}
std::string Depth(const std::string& feet) { return "$SDDBT," + feet + ",f,,M,,F*00\n"; }

TEST(JobLog, AWholeRun) {
  TextRun test;
  test.settings.MaxDiff = "300";
  test.settings.TargetName = "t";
  const std::string log =
      Date + Fix("20.0000", "120000") + "$GPGSV,1\n" + Fix("59.0000") + Depth("30") +  // 0 to 4
      Fix("20.0100", "120001.50", "1", "05") + Depth("31") +                           // 5, 6
      Fix("20.0100") + Depth("99") + Fix("20.0200", "120003", "0") + Depth("32") +     // 7 to 10
      "\n" + Fix("20.0300") + Depth("") + Fix("20.0400") + Depth("40.35933") +         // 11 to 15
      Fix("21.0000") + Depth("100.25");                                                // 16, 17
  EXPECT_EQ(test.ClickOn("a.log", log), Done);
  EXPECT_EQ(test.Out("t.drd.txt"),
            "Longitude;Latitude;Depth,m;Offset,m;Satellite,pc;HDOP,m\r\n55.166667,37.333333,9.14\r\n"
            "55.166667,37.3335,9.45\r\n55.166667,37.334,12.3\r\n55.166667,37.35,30.56\r\n\r\n");
  EXPECT_EQ(test.Out("t.srf.txt"),
            "37.333333,55.166667,-9.14\r\n37.3335,55.166667,-9.45\r\n37.334,55.166667,-12.3\r\n"
            "37.35,55.166667,-30.56\r\n\r\n");
  EXPECT_EQ(
      test.Out("t.plt"),
      "OziExplorer Track Point File Version 2.1\r\nWGS 84\r\nAltitude is in Feet\r\nReserved 3\r\n"
      "0,2,65535,t,0,0,2,8421376\r\n4\r\n55.166667,37.333333,1,-30,,05-Nov-26,12:00:01\r\n"
      "55.166667,37.3335,0,-31,,05-Nov-26,12:00:51\r\n55.166667,37.334,1,-40.35933,,05-Nov-26,12:00:01\r\n"
      "55.166667,37.35,1,-100.25,,05-Nov-26,12:00:01\r\n\r\n");
  const std::string mp = test.Out("t.mp");
  EXPECT_TRUE(mp.find("Name=t\r\nElevation=M\r\n") != std::string::npos);
  EXPECT_TRUE(mp.ends_with(
      "Type=0x1000\r\nLabel=12.3\r\nData0=(55.166667,37.334)\r\n[END]\r\n"
      "\r\n[POI]\r\nType=0x2900\r\nLabel=30.56 | 17\r\nData0=(55.166667,37.35)\r\n[END]\r\n\r\n"));
  EXPECT_EQ(test.Out("t.bad.txt"),
            "ammout of sattelites 05 in line 5\r\nsattelites missing in line 10\r\nzero depth in line 13\r\n"
            "distance beetween dots 1781 in line 17\r\n\r\n");
  EXPECT_EQ(test.settings.TargetName, "");
  EXPECT_EQ(test.window.CountLines(" line 10 - sattelites missing..."), 1);
  EXPECT_EQ(test.window.CountLines(" 55% line 10/18 dot 2"), 1);

  const std::string track = test.Out("t.plt");
  test.settings.TargetName = "t";
  EXPECT_EQ(test.ClickOn("a.log", WithLineEnd(log, '\n', "\r\n")), Done);
  EXPECT_EQ(test.Out("t.plt"), track);
}

TEST(JobLog, WhichSoundingsAreTaken) {
  const std::string south = "$GPGGA,120000,3310.0000,S,03720.0000,E,1,08\n";
  const std::string west = "$GPGGA,120000,5510.0000,N,03720.0000,W,1,08\n";
  const std::string empty = "$GPGGA,120000,,,,,0,08\n";
  struct Case {
    const char* what;
    std::string text, end, rows;
  };
  const std::string only = "55.166667,37.333333,9.14|";
  const std::vector<Case> table = {
      {"the date of today without one", Fix("20.0000") + Depth("30"), Done, only},
      {"of another hemisphere the position before", Date + Fix("20.0000") + Depth("30") + south + Depth("31"),
       Done, only},
      {"a first position in the west", Date + west + Depth("30"), Mismatch, ""},
      {"no position yet", Date + empty + Depth("30"), Done, ""},
      {"a second date sentence is passed over", Date + Date + Fix("20.0000") + Depth("30"), Done, only},
      {"a date of nowhere matters only with a fix", "$GPRMC,,V,,,,,,,,,*00\n", Done, ""},
      {"and then ends the run", "$GPRMC,,V,,,,,,,,,*00\n" + Fix("20.0000") + Depth("30"), Mismatch, ""},
      {"no line end at the end", Date + Fix("20.0000") + "$SDDBT,30", Done, only}};
  for (const Case& row : table) {
    SCOPED_TRACE(row.what);
    TextRun test;
    EXPECT_EQ(test.ClickOn("a.log", row.text), row.end);
    if (row.end != Done) continue;
    std::string rows;
    const std::vector<std::string> lines = test.OutLines("a.drd.txt");
    for (std::size_t i = 1; i < lines.size(); ++i) rows += lines[i] + "|";
    EXPECT_EQ(rows, row.rows);
  }
}

TEST(JobLog, BadInput) {
  const std::string good = Date + Fix("20.0000") + Depth("30");
  CheckRefusals("a.log", {{"", Corrupt},
                          {"\n\n", " ! source file without delimiters ';' or ','..."},
                          {"no separator\n" + good, " ! source file without delimiters ';' or ','..."},
                          {good + Fix("20.0100"), Corrupt},
                          {good + Date.substr(0, Date.size() - 1), Corrupt},
                          {good + "$GPRMC,120000,A\n", Corrupt},
                          {good + "$GPGGA,1200", Corrupt},
                          {good + "$GPGGA,120000,5510.0000,N,03720.0000,E,1\n", Corrupt},
                          {good + Fix("20.0100") + "$SDDBT", Corrupt},
                          {good + Fix("20.0100", "120000", "1", "") + Depth("30"), Mismatch},
                          {good + Fix("20.0100", "1200xx") + Depth("30"), Mismatch},
                          {good + Fix("20.0100") + Depth("deep"), Mismatch},
                          {good + Fix("20.0100") + Depth(std::string(1, '\0')), Mismatch},
                          {good + Fix("20.0100") + Depth("1e39"), " ! error JobLog: 6: Overflow"},
                          {good + "$GPGGA,120000,551000000,N,03720.0000,E,1,08\n" + Depth("30"),
                           " ! error JobLog: 5: Invalid procedure call or argument"}});
  TextRun test;
  EXPECT_EQ(test.ClickOn("a.log", std::string(50'000'000, ',') + std::string("\n\0\n", 3) + good), Done);
  EXPECT_EQ(test.OutLines("a.srf.txt").size(), 1U);
}

TEST(JobLog, AStopWritesNothing) {
  std::string log = Date;
  for (int i = 0; i < 9; ++i) log += Fix("20.0" + std::to_string(i) + "00") + Depth("30");
  for (const bool paused : {false, true}) {
    TextRun test;
    test.window.onPump = [&](int pump) {
      if (pump == 3 && paused) PauseClick(test.run);
      if (pump == 5) StopClick(test.run);
    };
    EXPECT_EQ(test.ClickOn("a.log", log), " * processing aborted by user");
    EXPECT_TRUE(test.HasNoOutput());
    EXPECT_EQ(test.window.CountLines(" 52% line 10/19 dot 5"), paused ? 0 : 1);
  }
}

TEST(JobLog, AFileThatCantBeWrittenLeavesTheOthers) {
  TextRun test;
  test.RecordTrack();
  std::filesystem::create_directory(test.OutPath("a.srf.txt"));
  EXPECT_EQ(test.ClickOn("a.log", Date + Fix("20.0000") + Depth("30") + Fix("20.0100") + Depth("31.5")),
            Done);
  EXPECT_EQ(test.window.CountLines("ошибка WriteF: 75. Path/File access error"), 1);
  EXPECT_TRUE(test.HasOut("a.drd.txt") && test.HasOut("a.plt") && test.HasOut("a.mp"));
  EXPECT_FALSE(test.HasOut("a.bad.txt"));
  EXPECT_EQ(test.calls, "track 1|1 55.166667 37.333333 30|0 55.166667 37.3335 31.5|");
}

TEST(JobLog, ARealLog) {
  if (RecordingsFolder().empty()) GTEST_SKIP() << "no recordings beside this checkout";
  TextRun test;
  test.ClickOn("boat.log", ReadWhole((RecordingsFolder() / "logs" / "moored-boat.log").string()));
  EXPECT_EQ(test.window.att, Done);
  EXPECT_EQ(test.OutLines("boat.srf.txt").size(), 32U);
  EXPECT_EQ(test.OutLines("boat.plt").size(), 6U + 32U);
  EXPECT_EQ(test.OutLines("boat.bad.txt").size(), 74U);
  EXPECT_EQ(test.OutLines("boat.bad.txt").at(0), "ammout of sattelites 00 in line 10");
}

}  // namespace
}  // namespace sondrix
