#include "jobs/job_log.h"

#include "core/date_time.h"
#include "fault_in.h"
#include "jobs/log_time.h"
#include "jobs/text_run.h"
#include "samples/nmea_log.h"

namespace sondrix {
namespace {

const char* const Done = " files successfully created, selected points ";
const char* const Corrupt = " ! log-file is corrupted, there are missing or incomplete lines";

std::string Rmc(const std::string& date) { return "$GPRMC,120000,A,,,,,,," + date + ",,*00\n"; }
const std::string Date = Rmc("051126");

// A fix on the parallel of 55 degrees 10 minutes, at 37 degrees and so many minutes.
std::string Fix(const std::string& minutes, const std::string& time = "120000",
                const std::string& quality = "1", const std::string& satellites = "08") {
  return "$GPGGA," + time + ",5510.0000,N,037" + minutes + ",E," + quality + "," + satellites +
         ",1.1,,M,,M,,*00\n";
}
std::string Depth(const std::string& feet) { return "$SDDBT," + feet + ",f,,M,,F*00\n"; }

TEST(JobLog, LeavesWhatItLeft) {
  const std::string good = Date + Fix("20.0000") + Depth("30");
  const std::string south = "$GPGGA,120000,3310.0000,S,03720.0000,E,1,08\n";
  const std::string trip = Date + Fix("19.9900") + Depth("29") + Fix("20.0000") + "$GPGSV,1\n" +
                           Fix("59.0000") + Depth("30") + Fix("20.0100", "120001.50", "1", "05") +
                           Depth("31") + Fix("20.0100") + Depth("99") + Fix("20.0200", "120003", "0") +
                           Depth("32") + "\n" + Fix("20.0300") + Depth("") + Fix("20.0400") +
                           Depth("40.35933") + Fix("21.0000") + Depth("100.25");
  std::string west;  // whose way is none
  for (const char* minutes : {"20.0000", "20.0100", "20.0300"})
    west += Fix(minutes) + Depth("30") + Fix(minutes, "120000", "0") + Depth(minutes);
  CheckRuns("a.log", false,
            {{NmeaLog(), Done, 0xFCBABE1C24B9B34A, "MaxDiff=40 DistDiff=2 DepthDiff=5 DepthSm=25"},
             {NmeaLog(), Done, 0xC0AE883682FB9844, "MaxDiff=3 DistDiff=8 ViewOzi=1 UseDcm=1"},
             {trip, Done, 0x6946E1D534F2DA22, "MaxDiff=300 DistDiff=1 UseDcm=1 TargetName=t"},
             {WithLineEnd(trip, '\n', "\r\n"), Done, 0x230E180A73E85306, "ViewOzi=1 MaxDiff=20"},
             {Date + west, Done, 0x268D45B071C6AC98, "DistDiff=10 MaxDiff=5"},
             {good + south + Depth("31"), Done, 0x8BBF043CEFF1E0DF},
             {Date + "$GPGGA,120000,,,,,0,08\n" + Depth("30"), Done, 0xFCBB29C7E097DBC0},
             {Date + Rmc("061126") + Fix("20.0000", "123") + Depth("30"), Done, 0x448083766700ACA6},
             {Rmc(""), Done, 0xA6359DB05CF1CF3F},  // a date of nowhere matters only with a fix
             {Date + Fix("20.0000") + "$SDDBT,30", Done, 0x3D43365F085142A0}});
}

TEST(JobLog, TheDateOfTodayWithoutOne) {
  for (const std::string& date : {std::string(), Rmc("010200")}) {
    TextRun test;
    const std::string today = TrackDate(ClockNow());
    test.ClickOn("a.log", date + Fix("20.0000") + Depth("30"));
    EXPECT_TRUE(test.Out("a.plt").ends_with("," + today + ",12:00:01\r\n\r\n") ||
                TrackDate(ClockNow()) != today);
  }
}

TEST(JobLog, Refusals) {
  const std::string good = Date + Fix("20.0000") + Depth("30");
  const std::string noSeparator = " ! source file without delimiters ';' or ','...";
  const std::string mismatch = " ! error JobLog: 13: Type mismatch";
  CheckRuns("a.log", false,
            {{"", Corrupt},
             {"\n\n", noSeparator},
             {"no separator\n" + good, noSeparator},
             {good + Fix("20.0100"), Corrupt},
             {good + Date.substr(0, Date.size() - 1), Corrupt},
             {good + "$GPRMC,120000,A\n", Corrupt},
             {good + "$GPGGA,120000,5510.0000,N,03720.0000,E,1\n", Corrupt},
             {good + Fix("20.0100") + "$SDDBT", Corrupt},
             {Date + "$GPGGA,120000,5510.0000,N,03720.0000,W,1,08\n" + Depth("30"), mismatch},
             {Rmc("") + Fix("20.0000"), mismatch},
             {good + Fix("20.0100", "120000", "1", "") + Depth("30"), mismatch},
             {good + Fix("20.0100") + Depth("deep"), mismatch},
             {good + Fix("20.0100") + Depth(std::string(1, '\0')), mismatch},
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

// Years from 30 lie in the last century.
TEST(LogTime, DatesAndTimes) {
  using Row = std::tuple<const char*, const char*, std::string>;
  for (const auto& [date, clock, stamp] :
       {Row{"311229", "123456", "2029-12-31T12:34:56"}, Row{"010130", "235959", "1930-01-01T23:59:59"},
        Row{"281299", "123456.50", "1999-12-28T12:34:50"}, Row{"290200", "123", "2000-02-29T12:03:23"},
        Row{"290223", "120000", ""}, Row{"041614", "120000", ""}, Row{"", "120000", ""},
        Row{"0a0100", "120000", ""}, Row{"04011x", "120000", ""}, Row{"010100", "240000", ""},
        Row{"010100", "196000", ""}, Row{"010100", "195960", ""}, Row{"010100", "1200xx", ""},
        Row{"010100", "12-100", ""}}) {
    LogTime time;
    time.SetDate(date);
    time.SetTime(clock);
    std::string text;
    EXPECT_EQ(FaultIn([&] { AppendStamp(text, time.Read()); }), stamp.empty() ? 13 : 0);
    EXPECT_EQ(text, stamp) << date << clock;
  }
}

}  // namespace
}  // namespace sondrix
