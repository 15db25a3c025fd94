#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/transcript.h"
#include "app/interrupt.h"
#include "app/session.h"
#include "core/files.h"
#include "digest.h"
#include "samples/echogram.h"
#include "temporary_folder.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <iomanip>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

struct Called {
  int status;
  std::string out, err;
};

Called Call(const std::string& line) {
  std::istringstream words(line);
  std::vector<std::string> arguments;
  for (std::string word; words >> std::quoted(word);) arguments.push_back(word);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = RunBatch(arguments);
  std::fflush(stdout);
  const std::string out = testing::internal::GetCapturedStdout();
  return {status, out, testing::internal::GetCapturedStderr()};
}

// A working folder of its own with some sources.
class Batch : public testing::Test {
 protected:
  Batch() {
    fs::current_path(fs::path(folder.Path("")));
    fs::create_directories("lost/a.plt");
    WriteBytes("lake.sl2", EchogramBytes(2, {Frame(2, 10), Frame(0, 10), Frame(2, 11)}));
    OutputFile("a.csv").Write("lat,lon,depth\n55.1,37.1,5\n");
  }
  ~Batch() override { fs::current_path(before); }

  fs::path before = fs::current_path();
  TemporaryFolder folder;
};

TEST_F(Batch, EachSourceHasItsLastLineAndAllTheStatus) {
  WriteBytes("others.sl2", EchogramBytes(2, std::vector(5003, Frame(0, 10, 0, 0, 16))));
  auto cut = EchogramBytes(2, std::vector(3, Frame(2, 10)));
  cut.resize(cut.size() - 9);
  WriteBytes("cut.sl2", cut);
  SampleFrame longSamples = Frame(2, 11);
  longSamples.FrameSize = 200;  // its samples run into what follows
  WriteBytes("bad.sl2", EchogramBytes(2, {longSamples}));
  WriteBytes("bad.sl3", EchogramBytes(3, {Frame(2, 10), longSamples, Frame(2, 10), Frame(2, 10)}));
  WriteBytes("LAKE.SL2", EchogramBytes(2, {Frame(2, 10)}));
  OutputFile("faulty.ini").Write("[Main]\nMakeCut=5\n");
  fs::create_directories("trips/below");
  for (const char* name : {"trips/b.sl2", "trips/below/d.sl2", "trips/c.SL2", "trips/d"})
    fs::copy("lake.sl2", name);
  for (const char* name : {"trips/b.csv", "trips/below/d.csv"}) fs::copy("a.csv", name);
  const std::string points = "a.csv: files successfully created, selected points 1 from 3 lines\n";
  const std::string missing = " ! error JobSl: 53. File not found\n";
  const std::string whole = "lake.sl2: 100%  scan 2 ^00:00:01 offset  4136 - L3.35<>A3.06... * done\n";
  const std::string question =
      "Channel not found: No frame of Downscan before scan 5001, which is 99% of the file. Go on to the next "
      "scan? ";
  const struct {
    std::string line;
    int status;
    std::string out, err = {};  // the second is a part of what is said, just once
  } cases[] = {
      {"-o new/out --set DistDiff=0 -s MaxProc=99 -s EhoSens=50 lake.sl2", 0, whole},
      // Cropping switches the pictures off, and these can be switched on again; what is set already stays so.
      {"-o zero -s MakeCut=1 -s MakeGraf=1 -s MakeCut=1 -s UseTyp=0 lake.sl2", 0,
       "lake.sl2: 100%  scan 1 * done\n"},
      // Why a run gave no points.
      {"-o why LAKE.SL2", 1, "LAKE.SL2: ! source file without delimiters ';' or ','...\n",
       "LAKE.SL2: 0 points: the extension \".SL2\" is read as a table, it has to be \".sl2\"\n"},
      {"-o why -s DistDiff=9e6 -s boxLang=DEU trips/b.sl2", 0,
       "b.sl2: 100%  Scan 2 ^00:00:01 Offset  4136 - L3.35<>A3.06... * Ausgeführt\n",
       "b.sl2: 0 Punkte: jede Lotung (2) fiel durch DistDiff = 9000000 m weg\n"},
      {"-o none -s MakeGraf=0 lake.sl2", 0, "lake.sl2: 100%  scan 2 ^00:00:01 * done\n"},
      {"-o out others.sl2", 0, "others.sl2: 100%  scan 0 * done\n", question + "yes\n"},
      {"-o out --answer no others.sl2", 0, "others.sl2: * processing aborted by user\n", question + "no\n"},
      {"-o cut cut.sl2", 1, "cut.sl2: ! error JobSl: 9. Subscript out of range\n"},
      {"-o out -s boxLang=DEU bad.sl2", 1, "bad.sl2: 100Log-Fehler10% Offset 208... * Ausgeführt\n"},
      {"-o out bad.sl3", 1, "bad.sl3: * process stopped\n"},
      {"-o out -sTargetName=e=f a.csv", 0, points},
      {"-o out none.sl2 lost/also.sl2 a.csv", 1, "none.sl2:" + missing + "also.sl2:" + missing + points},
      {"-v -o out -s Source=none.sl2", 1,
       "none.sl2: begin processing...\nnone.sl2: 100gin processing... * done\nnone.sl2:" + missing},
      {"-o out lost/", 1, "", "lost/: nothing in it can be converted"},
      {"-q -o out --no-picture -s TargetName=plain lake.sl2", 0, ""},
      {"-q -o out trips none.sl2", 1, "none.sl2:" + missing,
       "b.csv: left out, it has the name of an output of trips/b.sl2\n"},
      {"-j 256 -q -o deep -r trips", 0, "", "c.SL2: left out, its extension must be spelt .sl2\n"},
      {"-o never --write-ini ./lake.sl2 lake.sl2", 1, "", "lake.sl2: is a source"},
      {"-o kept --write-ini kept.ini -s MakeCut=1 -s ScanSkip=7", 0, ""},
      {"-o never --write-ini a.csv/b.ini lake.sl2", 1, "", "a.csv/b.ini: the settings couldn't be written"},
      {"-q -o read --ini kept.ini lake.sl2", 0, "",
       "lake.sl2: 0 points: the interval from 7 lies outside the indices 0 to 1\n"},
      {"-o a.csv/x none.sl2", 1, "none.sl2: ! target folder access denied\n"},
      // An output that is lost counts even behind a good end.
      {"-o lost a.csv", 1, points,
       "sondrix-batch: a.csv: ошибка WriteF: 75. Path/File access error: lost/a.plt\n"},
      {"-o out -s ViewOzi=1 -s MakeCut=1 -s SaveGraf=1 none.sl2", 1, "none.sl2:" + missing,
       "SaveGraf is disabled while MakeGraf is clear: ignored\nsondrix-batch:  ! copy oziapi.dll"},
      {"-o never", 2, "", "no source"},
      {"-o never a.csv \"\"", 2, "", "a source is empty"},
      {"-o never -s Source=", 2, "", "no source"},
      {"-o never a.csv -s UseDcm", 2, "", "\"UseDcm\""},
      {"-o never a.csv --answer maybe", 2, "", "maybe"},
      {"-o never a.csv -j 257", 2, "", "257"},
      {"-o never -s Sorce=x a.csv", 2, "", "\"Sorce\""},
      {"-o never -s UseDcm=2 a.csv", 2, "", "sondrix-batch: UseDcm takes 0 or 1, not \"2\"\n"},
      {"-o out a.csv lake.sl2 ./a.csv", 1,
       "a.csv: ! \"./a.csv\" would write the same output \"out/a.txt\"\n" + whole +
           "a.csv: ! \"a.csv\" would write the same output \"out/a.txt\"\n"},
      {"-o never --ini faulty.ini a.csv", 2, "", "MakeCut: 380. Invalid property value"},
      {"-o never --ini none.ini a.csv", 2, "", "none.ini: File not found"},
  };
  for (const auto& [line, status, out, err] : cases) {
    const Called called = Call(line);
    EXPECT_EQ(called.status, status) << line;
    EXPECT_EQ(called.out, out) << line;
    EXPECT_NE(called.err.find(err), std::string::npos) << called.err;
    EXPECT_EQ(called.err.find(err), called.err.rfind(err)) << called.err;
  }
  std::set<std::string> made;
  for (const auto& entry : fs::recursive_directory_iterator("."))
    if (entry.is_regular_file())
      made.insert(entry.path().generic_string() + " " + std::to_string(entry.file_size()) + "\n");
  std::string list;
  for (const std::string& file : made) list += file;
  EXPECT_TRUE(HasDigest(list, 0xD02C4D0CAE394D33));
}

TEST_F(Batch, SourcesAtATimeLeaveTheSameBytesAndLines) {
  std::string sources;
  for (int i = 0; i < 6; ++i) {
    const std::string path = "lake" + std::to_string(i) + ".sl2";
    WriteBytes(path, EchogramBytes(2, std::vector(static_cast<std::size_t>(900 - 150 * i),
                                                  Frame(2, 10.0F + static_cast<float>(i)))));
    sources += " " + path;
  }
  const auto convert = [&](const std::string& jobs) {
    fs::remove_all("out");
    const Called called = Call("-v -s DistDiff=0 -o out " + jobs + sources);
    std::string left = called.out + called.err;
    for (int i = 0; i < 6; ++i) left += ReadWhole("out/lake" + std::to_string(i) + ".csv");
    return left;
  };
  const std::string alone = convert("-j 1");
  EXPECT_GT(alone.size(), 100'000u);
  EXPECT_EQ(convert("-j 3"), alone);
}

TEST_F(Batch, JsonHoldsTheRecord) {
  fs::create_directories("out/lake_bad.txt");
  WriteBytes("lake.sl2",
             EchogramBytes(2, {Frame(2, 10), Frame(0, 0), Frame(7, 0), Frame(2, 0), Frame(2, 11)}));
  const Called called = Call("--json -o out lake.sl2 none.sl2 a.csv a.csv");
  EXPECT_TRUE(HasDigest(std::regex_replace(called.out, std::regex(R"("seconds":\d\.[-e\d]+)"), ""),
                        0x43742681627A78AD));
  EXPECT_EQ(called.status, 1);
}

TEST(BatchOptions, TextsThatAreAskedFor) {
  for (const auto& [option, part] : {std::pair("--help", "-o,--target"),
                                     {"--version", "sondrix-batch "},
                                     {"--list-fields", "\nUseTyp      2        "}}) {
    const Called called = Call(option);
    EXPECT_EQ(called.status, 0);
    EXPECT_TRUE(called.out.find(part) != std::string::npos && called.err.empty()) << called.out;
  }
}

TEST(BatchWindow, ProgressIsErasedBeforeALine) {
  Transcript transcript(false);
  BatchWindow window({.answer = false, .progress = true}, transcript);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  window.RepaintAtt();  // of no source yet
  window.BeginSource("\x7F\x1Fз\n");
  window.SetAtt(std::string(90, 'x'), LineKind::Fault);
  window.RepaintAtt();
  window.RepaintAtt();  // too early
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(window.Ask("one", "Title"));
    window.Inform("two", "Title");
  }
  window.SetAtt("short");
  std::this_thread::sleep_for(std::chrono::milliseconds(101));
  for (int i = 0; i < 63; ++i) window.Pump();
  window.RepaintAtt();
  std::this_thread::sleep_for(std::chrono::milliseconds(101));
  window.SetAtt("y");
  for (int i = 0; i < 2; ++i) window.Pump();
  window.EndSource(true);
  window.EndSource(true);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "??з?:y\n");
  const std::string cut = "??з?:" + std::string(74, 'x'), wiped = "\r" + std::string(79, ' ') + "\r";
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "\r" + cut + wiped + "Title: one no\nTitle: two\n\r??з?:short\r??з?:y    \r" +
                std::string(6, ' ') + "\r");
  for (const bool on : {true, false, true}) {
    window.SetEnabled("RunSet", on);
    EXPECT_EQ(window.IsEnabled("RunSet"), on);
  }
}

TEST(BatchWindow, CtrlCStopsTheRunAtEachPump) {
  Transcript transcript(false);
  BatchWindow window({}, transcript);
  Session session(window);
  window.SetRun(&session.run);
  const InterruptGuard guard;
  for (int i = 0; i < 2; ++i) {
    std::raise(SIGINT);
    // cppcheck-suppress unreachableCode ; raise comes back, since the guard catches the signal
    session.state.StopFlag = false;
    window.Pump();
    EXPECT_TRUE(session.state.StopFlag);
  }
}

}  // namespace
}  // namespace sondrix
