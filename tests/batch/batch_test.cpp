#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/interrupt.h"
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

struct Outcome {
  int status;
  std::string out, err;
};

Outcome Batch(const std::string& line) {
  std::istringstream words(line);
  const std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = RunBatch(arguments);
  std::fflush(stdout);
  return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

TEST(Batch, EachSourceHasItsLastLineAndAllTheStatus) {
  const fs::path before = fs::current_path(), folder = fs::path(testing::TempDir()) / "sondrix_batch_test";
  fs::remove_all(folder);
  fs::create_directories(folder / "lost" / "a.plt");
  fs::current_path(folder);
  const auto bytes = EchogramBytes(2, {Frame(2, 10), Frame(0, 10), Frame(2, 11)});
  OutputFile("lake.sl2").Write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  OutputFile("a.csv").Write("lat,lon,depth\n55.1,37.1,5\n");
  OutputFile("faulty.ini").Write("[Main]\nMakeCut=5\n");
  const std::string points = "a.csv: files successfully created, selected points 1 from 3 lines\n";
  const std::string missing = " ! error JobSl: 53. File not found\n";
  const struct {
    std::string line;
    int status;
    std::string out, err;  // the second is a part of what is said
  } cases[] = {
      {"-o new/out -s DistDiff=0 lake.sl2", 0,
       "lake.sl2: 100%  scan 2 ^00:00:01 offset  4136 - L3.35<>A3.06... * done\n", ""},
      {"-o zero -s MakeGraf=0 -s UseTyp=0 lake.sl2", 0, "lake.sl2: 100%  scan 1 * done\n", ""},
      {"-o out none.sl2 lost/also.sl2 a.csv", 1, "none.sl2:" + missing + "also.sl2:" + missing + points, ""},
      {"-v -o out -s Source=none.sl2", 1,
       "none.sl2: begin processing...\nnone.sl2: 100gin processing... * done\nnone.sl2:" + missing, ""},
      {"-o out lost/", 1, "lost/: begin processing...\n", ""},
      {"-o a.csv/x -s boxLang=RUS none.sl2", 1, "none.sl2: ! ошибка доступа к целевой папке...\n", ""},
      // An output that is lost counts even behind a good end.
      {"-o lost a.csv", 1, points, "a.csv: ошибка WriteF: 75. Path/File access error"},
      {"-o out -s ViewOzi=1 -s MakeCut=1 -s SaveGraf=1 none.sl2", 1, "none.sl2:" + missing,
       "SaveGraf is disabled while MakeGraf is clear: ignored\nsondrix-batch:  ! copy oziapi.dll"},
      {"-o never", 2, "", "no source"},
      {"-o never a.csv -s UseDcm", 2, "", "\"UseDcm\""},
      {"-o never a.csv --answer maybe", 2, "", "maybe"},
      {"-o never -s Sorce=x a.csv", 2, "", "\"Sorce\""},
      {"-o never -s UseDcm=2 a.csv", 2, "", "UseDcm takes 0 or 1, not \"2\""},
      {"-o never a.csv a.csv", 2, "", "same output"},
      {"-o never --ini faulty.ini a.csv", 2, "", "MakeCut: 380. Invalid property value"},
      {"-o never --ini none.ini a.csv", 2, "", "none.ini: File not found"},
  };
  for (const auto& [line, status, out, err] : cases) {
    const Outcome outcome = Batch(line);
    EXPECT_EQ(outcome.status, status) << line;
    EXPECT_EQ(outcome.out, out) << line;
    EXPECT_EQ(outcome.err.empty(), err.empty()) << outcome.err;
    EXPECT_NE(outcome.err.find(err), std::string::npos) << outcome.err;
  }
  EXPECT_EQ(ReadWhole("new/out/lake_ch2.bmp").size(), 54U + 420 * (402 * 3 + 2));
  EXPECT_FALSE(fs::exists("zero/lake_ch0.bmp"));
  EXPECT_FALSE(fs::exists("never"));
  fs::current_path(before);
  fs::remove_all(folder);
}

TEST(BatchWindow, CtrlCStopsTheRunAtEachPump) {
  BatchWindow window(false, true);
  Session session(window);
  window.SetRun(&session.run);
  const InterruptGuard guard;
  window.Pump();
  EXPECT_FALSE(session.state.StopFlag);
  for (int i = 0; i < 2; ++i) {
    std::raise(SIGINT);
    // cppcheck-suppress unreachableCode ; raise comes back, since the guard catches the signal
    session.state.StopFlag = false;
    window.Pump();
    EXPECT_TRUE(session.state.StopFlag);
  }
}

TEST(BatchWindow, AnswersAndShowsAQuestionOnce) {
  for (const bool answer : {true, false}) {
    BatchWindow window(false, answer);
    testing::internal::CaptureStderr();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(window.Ask("Go on?", "Channel"), answer);
    window.Inform("Load a map", "Map");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::string("Channel: Go on? ") + (answer ? "yes" : "no") + "\nMap: Load a map\n");
  }
}

}  // namespace
}  // namespace sondrix
