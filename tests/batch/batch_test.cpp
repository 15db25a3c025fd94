#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/interrupt.h"
#include "app/session.h"
#include "core/files.h"
#include "samples/echogram.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

struct Outcome {
  int status;
  std::string out, err;
};

Outcome Batch(const std::vector<std::string>& arguments) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = RunBatch(arguments);
  std::fflush(stdout);
  return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

class BatchTest : public testing::Test {
 protected:
  BatchTest() {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  ~BatchTest() override { std::filesystem::remove_all(folder); }

  std::string Path(const std::string& name) const { return (folder / name).string(); }
  std::string Write(const std::string& name, std::string_view bytes) const {
    OutputFile(Path(name)).Write(bytes);
    return Path(name);
  }

  std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) /
      ("sondrix_batch_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(BatchTest, WrongUsageRunsNothingAndSaysWhy) {
  const std::string source = Write("a.sl2", "");
  const std::string faulty = Write("faulty.ini", "[Main]\nMakeCut=5\n");
  const struct {
    std::vector<std::string> arguments;
    std::string said;
  } cases[] = {
      {{}, "no source"},
      {{"-s", "Sorce=x", source}, "\"Sorce\""},
      {{"-s", "UseDcm=2", source}, "UseDcm takes 0 or 1, not \"2\""},
      {{"-s", "UseTyp=1", source}, "UseTyp takes 0, 2, 5 or 9"},
      {{"-s", "boxLang=FRA", source}, "boxLang takes RUS, ENG or DEU"},
      {{source, source}, "same output"},
      {{"--ini", faulty, source}, "MakeCut: 380. Invalid property value"},
      {{"--ini", Path("none.ini"), source}, "none.ini: File not found"},
  };
  for (const auto& oneCase : cases) {
    auto arguments = oneCase.arguments;
    arguments.insert(arguments.end(), {"-o", Path("out")});
    const Outcome outcome = Batch(arguments);
    EXPECT_EQ(outcome.status, 2) << oneCase.said;
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find(oneCase.said), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
  }
}

TEST_F(BatchTest, APictureOfTheEndLiesBesideTheCsv) {
  const auto bytes = EchogramBytes(2, {Frame(2, 10), Frame(0, 10), Frame(2, 11)});
  const std::string source = Write("lake.sl2", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  const Outcome outcome = Batch({"-o", Path("out"), "-s", "DistDiff=0", source});
  EXPECT_EQ(outcome.out, "lake.sl2: 100%  scan 2 ^00:00:01 offset  4136 - L3.35<>A3.06... * done\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(ReadWhole(Path("out/lake_ch2.bmp")).size(), 54U + 420 * (402 * 3 + 2));
  Batch({"-o", Path("out"), "-s", "MakeGraf=0", "-s", "UseTyp=0", source});
  EXPECT_FALSE(std::filesystem::exists(Path("out/lake_ch0.bmp")));
}

TEST_F(BatchTest, AnOutputThatIsLostCountsEvenBehindAGoodEnd) {
  const std::string source = Write("a.csv", "lat,lon,depth\n55.1,37.1,5\n");
  std::filesystem::create_directories(Path("out/a.plt"));
  const Outcome outcome = Batch({"-o", Path("out"), source});
  EXPECT_TRUE(outcome.out.starts_with("a.csv: files successfully created")) << outcome.out;
  EXPECT_NE(outcome.err.find("ошибка WriteF: 75"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(BatchTest, ListsEveryField) {
  const Outcome outcome = Batch({"--list-fields"});
  EXPECT_EQ(outcome.status, 0);
  for (const Field& field : Fields()) {
    EXPECT_NE(outcome.out.find("\n" + std::string(field.name) + " "), std::string::npos) << field.name;
  }
}

TEST_F(BatchTest, OneLineForEachSourceAndTheStatusOfAll) {
  std::filesystem::create_directories(folder / "dir");
  const std::string missing = Path("none.sl2"), other = Path("also.sl2"), dir = Path("dir") + PathSeparator;

  const Outcome failed = Batch({"-o", Path("new/out"), missing, other});
  EXPECT_EQ(failed.status, 1);
  EXPECT_TRUE(failed.out.starts_with("none.sl2: ! error ")) << failed.out;
  EXPECT_NE(failed.out.find("\nalso.sl2: ! error "), std::string::npos) << failed.out;
  EXPECT_TRUE(std::filesystem::is_directory(folder / "new" / "out"));

  const Outcome noJob = Batch({"-o", Path("out"), dir});
  EXPECT_EQ(noJob.status, 1);
  EXPECT_EQ(noJob.out, dir + ": begin processing...\n");

  Write("file", "");
  const Outcome denied = Batch({"-o", Path("file") + PathSeparator + "x", "-s", "boxLang=RUS", missing});
  EXPECT_EQ(denied.status, 1);
  EXPECT_EQ(denied.out, "none.sl2: ! ошибка доступа к целевой папке...\n");
}

TEST_F(BatchTest, VerboseShowsEveryChangeOnce) {
  const Outcome outcome = Batch({"-v", "-o", Path("out"), "-s", "Source=" + Path("none.sl2")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.out.starts_with("none.sl2: begin processing...\nnone.sl2: ")) << outcome.out;
  const std::size_t lastLine = outcome.out.rfind("none.sl2:");
  EXPECT_EQ(outcome.out.find(outcome.out.substr(lastLine)), lastLine) << outcome.out;
}

TEST_F(BatchTest, EditsTellWhatDidNotWork) {
  const Outcome outcome =
      Batch({"-o", Path("out"), "-s", "ViewOzi=1", "-s", "MakeCut=1", "-s", "SaveGraf=1", Path("none.sl2")});
  EXPECT_NE(outcome.err.find("copy oziapi.dll"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find("SaveGraf is disabled"), std::string::npos) << outcome.err;
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
