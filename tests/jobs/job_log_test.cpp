#include "jobs/job_log.h"

#include "core/date_time.h"
#include "jobs/text_run.h"

namespace sondrix {
namespace {

const std::string Done = " files successfully created, selected points ";
const std::string Corrupt = " ! log-file is corrupted, there are missing or incomplete lines";
const std::string Mismatch = " ! error JobLog: 13: Type mismatch";

std::string Rmc(const std::string& date) { return "$GPRMC,120000,A,,,,,,," + date + ",,*00\n"; }
const std::string Date = Rmc("051126");

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
  test.settings.DistDiff = "1";
  test.settings.UseDcm = true;
  test.settings.TargetName = "t";
  const std::string log =
      Date + Fix("19.9900") + Depth("29") +                                         // 0 to 2
      Fix("20.0000", "120000") + "$GPGSV,1\n" + Fix("59.0000") + Depth("30") +      // 3 to 6
      Fix("20.0100", "120001.50", "1", "05") + Depth("31") +                        // 7, 8
      Fix("20.0100") + Depth("99") + Fix("20.0200", "120003", "0") + Depth("32") +  // 9 to 12
      "\n" + Fix("20.0300") + Depth("") + Fix("20.0400") + Depth("40.35933") +      // 13 to 17
      Fix("21.0000") + Depth("100.25");                                             // 18, 19
  EXPECT_EQ(test.ClickOn("a.log", log), Done);
  EXPECT_EQ(test.Summary(), "finished 21 8 7 4 t.drd.txt t.srf.txt t.plt t.mp t.bad.txt");
  EXPECT_EQ(test.Out("t.drd.txt"),
            "Longitude;Latitude;Depth,m;Offset,m;Satellite,pc;HDOP,m\r\n55.166667,37.333333,9.1\r\n"
            "55.166667,37.3335,9.4\r\n55.166667,37.334,12.3\r\n55.166667,37.35,30.6\r\n\r\n");
  EXPECT_EQ(test.Out("t.srf.txt"),
            "37.333333,55.166667,-9.1\r\n37.3335,55.166667,-9.4\r\n37.334,55.166667,-12.3\r\n"
            "37.35,55.166667,-30.6\r\n\r\n");
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
      "\r\n[POI]\r\nType=0x2900\r\nLabel=30.6 | 19\r\nData0=(55.166667,37.35)\r\n[END]\r\n\r\n"));
  EXPECT_EQ(test.Out("t.bad.txt"),
            "ammout of sattelites 05 in line 7\r\nsattelites missing in line 12\r\nzero depth in line 15\r\n"
            "distance beetween dots 1781 in line 19\r\n\r\n");
  EXPECT_EQ(test.settings.TargetName, "");
  EXPECT_EQ(test.window.CountLines(" line 12 - sattelites missing..."), 1);
  EXPECT_EQ(test.window.CountLines(" 60% line 12/20 dot 2"), 1);

  const std::string track = test.Out("t.plt");
  EXPECT_EQ(test.ClickOn("t.log", WithLineEnd(log, '\n', "\r\n")), Done);
  EXPECT_EQ(test.Out("t.plt"), track);
}

TEST(JobLog, WhichSoundingsAreTaken) {
  const std::string fixAndDepth = Fix("20.0000") + Depth("30");
  const std::string south = "$GPGGA,120000,3310.0000,S,03720.0000,E,1,08\n";
  const std::string today = TrackDate(ClockNow());
  struct Case {
    const char* what;
    std::string text, time;  // of the only row of the track; empty for none
  };
  const std::vector<Case> cases = {
      {"the date of today without one", fixAndDepth, today + ",12:00:01"},
      {"and with the placeholder of a receiver", Rmc("010200") + fixAndDepth, today + ",12:00:01"},
      {"a leap day of this century", Rmc("290200") + fixAndDepth, "29-Feb-00,12:00:01"},
      {"short time", Date + Fix("20.0000", "123") + Depth("30"), "05-Nov-26,12:03:24"},
      {"of another hemisphere the position before", Date + fixAndDepth + south + Depth("31"),
       "05-Nov-26,12:00:01"},
      {"no position yet", Date + "$GPGGA,120000,,,,,0,08\n" + Depth("30"), ""},
      {"a second date is passed over", Date + Rmc("061126") + fixAndDepth, "05-Nov-26,12:00:01"},
      {"a date of nowhere matters only with a fix", Rmc(""), ""},
      {"no line end at the end", Date + Fix("20.0000") + "$SDDBT,30", "05-Nov-26,12:00:01"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.what);
    TextRun test;
    EXPECT_EQ(test.ClickOn("a.log", row.text), Done);
    const std::string end =
        row.time.empty() ? "\r\n0\r\n\r\n" : "\r\n1\r\n55.166667,37.333333,1,-30,," + row.time + "\r\n\r\n";
    EXPECT_TRUE(test.Out("a.plt").ends_with(end) || TrackDate(ClockNow()) != today) << test.Out("a.plt");
  }
}

TEST(JobLog, BadInput) {
  const std::string good = Date + Fix("20.0000") + Depth("30");
  const std::string west = "$GPGGA,120000,5510.0000,N,03720.0000,W,1,08\n";
  const std::string noSeparator = " ! source file without delimiters ';' or ','...";
  CheckEnds("a.log", {{"", Corrupt},
                      {"\n\n", noSeparator},
                      {"no separator\n" + good, noSeparator},
                      {good + Fix("20.0100"), Corrupt},
                      {good + Date.substr(0, Date.size() - 1), Corrupt},
                      {good + "$GPRMC,120000,A\n", Corrupt},
                      {good + "$GPGGA,120000,5510.0000,N,03720.0000,E,1\n", Corrupt},
                      {good + Fix("20.0100") + "$SDDBT", Corrupt},
                      {Date + west + Depth("30"), Mismatch},
                      {Rmc("") + Fix("20.0000"), Mismatch},
                      {Rmc("290223") + Fix("20.0000"), Mismatch},
                      {Rmc("041614") + Fix("20.0000"), Mismatch},
                      {good + Fix("20.0100", "240000") + Depth("30"), Mismatch},
                      {good + Fix("20.0100", "196019") + Depth("30"), Mismatch},
                      {good + Fix("20.0100", "1200xx") + Depth("30"), Mismatch},
                      {good + Fix("20.0100", "120000", "1", "") + Depth("30"), Mismatch},
                      {good + Fix("20.0100") + Depth("deep"), Mismatch},
                      {good + Fix("20.0100") + Depth(std::string(1, '\0')), Mismatch},
                      {good + Fix("20.0100") + Depth("1e39"), " ! error JobLog: 6: Overflow"},
                      {good + "$GPGGA,120000,551000000,N,03720.0000,E,1,08\n" + Depth("30"),
                       " ! error JobLog: 5: Invalid procedure call or argument"}});
}

TEST(JobLog, AStopWritesNothing) {
  std::string log = Date;
  for (int i = 0; i < 9; ++i) log += Fix("20.0" + std::to_string(i) + "00") + Depth("30");
  TextRun test;
  test.window.onPump = [&](int pump) {
    if (pump == 5) StopClick(test.run);
  };
  EXPECT_EQ(test.ClickOn("a.log", log), " * processing aborted by user");
  EXPECT_EQ(test.Summary(), "stopped 13 6 6 6");
  EXPECT_TRUE(std::filesystem::is_empty(test.folder / "out"));
  EXPECT_EQ(test.window.CountLines(" 52% line 10/19 dot 5"), 1);
}

}  // namespace
}  // namespace sondrix
