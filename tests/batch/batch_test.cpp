#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/interrupt.h"
#include "app/session.h"
#include "core/files.h"
#include "samples/echogram.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

TEST(Batch, EachSourceHasItsLastLineAndAllTheStatus) {
  const fs::path before = fs::current_path(), folder = fs::path(testing::TempDir()) / "sondrix_batch_test";
  fs::remove_all(folder);
  fs::create_directories(folder / "lost" / "a.plt");
  fs::current_path(folder);
  WriteBytes("lake.sl2", EchogramBytes(2, {Frame(2, 10), Frame(0, 10), Frame(2, 11)}));
  WriteBytes("others.sl2", EchogramBytes(2, std::vector(5003, Frame(0, 10, 0, 0, 16))));
  SampleFrame longSamples = Frame(2, 11);
  longSamples.FrameSize = 200;  // its samples run into what follows
  WriteBytes("bad.sl2", EchogramBytes(2, {longSamples}));
  OutputFile("a.csv").Write("lat,lon,depth\n55.1,37.1,5\n");
  OutputFile("faulty.ini").Write("[Main]\nMakeCut=5\n");
  const std::string points = "a.csv: files successfully created, selected points 1 from 3 lines\n";
  const std::string missing = " ! error JobSl: 53. File not found\n";
  const std::string question =
      "Channel not found: There is no frame of the chosen channel in 5000 scans. Go on? ";
  const struct {
    std::string line;
    int status;
    std::string out, err = {};  // the second is a part of what is said, just once
  } cases[] = {
      {"-o new/out --set DistDiff=0 -s MaxProc=99 -s EhoSens=50 lake.sl2", 0,
       "lake.sl2: 100%  scan 2 ^00:00:01 offset  4136 - L3.35<>A3.06... * done\n"},
      // Cropping switches the pictures off, and these can be switched on again; what is set already stays so.
      {"-o zero -s MakeCut=1 -s MakeGraf=1 -s MakeCut=1 -s UseTyp=0 lake.sl2", 0,
       "lake.sl2: 100%  scan 1 * done\n"},
      {"-o none -s MakeGraf=0 lake.sl2", 0, "lake.sl2: 100%  scan 2 ^00:00:01 * done\n"},
      {"-o out others.sl2", 0, "others.sl2: 100%  scan 0 * done\n", question + "yes\n"},
      {"-o out --answer no others.sl2", 0, "others.sl2: * processing aborted by user\n", question + "no\n"},
      {"-o out -s boxLang=DEU bad.sl2", 1, "bad.sl2: 100Log-Fehler10% Offset 208... * Ausgeführt\n"},
      {"-o out -sTargetName=e=f a.csv", 0, points},
      {"-o out none.sl2 lost/also.sl2 a.csv", 1, "none.sl2:" + missing + "also.sl2:" + missing + points},
      {"-o out none.mp", 1, "none.mp: * specify the source file in 'polish' format to continue\n"},
      {"-v -o out -s Source=none.sl2", 1,
       "none.sl2: begin processing...\nnone.sl2: 100gin processing... * done\nnone.sl2:" + missing},
      {"-o out lost/", 1, "lost/: begin processing...\n"},
      {"-o a.csv/x none.sl2", 1, "none.sl2: ! target folder access denied\n"},
      // An output that is lost counts even behind a good end.
      {"-o lost a.csv", 1, points, "a.csv: ошибка WriteF: 75. Path/File access error"},
      {"-o out -s ViewOzi=1 -s MakeCut=1 -s SaveGraf=1 none.sl2", 1, "none.sl2:" + missing,
       "SaveGraf is disabled while MakeGraf is clear: ignored\nsondrix-batch:  ! copy oziapi.dll"},
      {"-o never", 2, "", "no source"},
      {"-o never a.csv -s UseDcm", 2, "", "\"UseDcm\""},
      {"-o never a.csv --answer maybe", 2, "", "maybe"},
      {"-o never -s Sorce=x a.csv", 2, "", "\"Sorce\""},
      {"-o never -s UseDcm=2 a.csv", 2, "", "UseDcm takes 0 or 1, not \"2\""},
      {"-o never -s MaxProc=100 a.csv", 2, "", "MaxProc takes at most 2 characters"},
      {"-o never -s EhoSens=51 a.csv", 2, "", "EhoSens takes a whole number"},
      {"-o never -s EhoSens=-101 a.csv", 2, "", "EhoSens takes a whole number"},
      {"-o never -s EhoSens=1.5 a.csv", 2, "", "EhoSens takes a whole number"},
      {"-o never -s UseTyp=1 a.csv", 2, "", "UseTyp takes 0, 2, 5 or 9"},
      {"-o never -s boxLang=deu a.csv", 2, "", "boxLang takes RUS, ENG or DEU"},
      {"-o out a.csv lake.sl2 ./a.csv", 1,
       "a.csv: ! \"./a.csv\" would write the same output \"out/a.txt\"\n"
       "lake.sl2: 100%  scan 2 ^00:00:01 offset  4136 - L3.35<>A3.06... * done\n"
       "a.csv: ! \"a.csv\" would write the same output \"out/a.txt\"\n"},
      {"-o never --ini faulty.ini a.csv", 2, "", "MakeCut: 380. Invalid property value"},
      {"-o never --ini none.ini a.csv", 2, "", "none.ini: File not found"},
  };
  for (const auto& [line, status, out, err] : cases) {
    std::istringstream words(line);
    const std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunBatch(arguments), status) << line;
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), out) << line;
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find(err), std::string::npos) << said;
    EXPECT_EQ(said.find(err), said.rfind(err)) << said;
  }
  EXPECT_EQ(ReadWhole("new/out/lake_ch2.bmp").size(), 54U + 420 * (402 * 3 + 2));
  EXPECT_TRUE(fs::exists("zero/lake_ch0.sl2") && fs::exists("zero/lake_ch0.bmp"));
  EXPECT_FALSE(fs::exists("none/lake_ch2.bmp") || fs::exists("out/others_ch2.bmp"));
  EXPECT_TRUE(fs::exists("out/e=f.txt"));
  EXPECT_FALSE(fs::exists("never"));
  fs::current_path(before);
  fs::remove_all(folder);
}

TEST(BatchWindow, CtrlCStopsTheRunAtEachPump) {
  BatchWindow window(false, true);
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
