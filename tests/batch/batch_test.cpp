#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/transcript.h"
#include "app/interrupt.h"
#include "app/session.h"
#include "call.h"
#include "core/files.h"
#include "digest.h"
#include "samples/echogram.h"
#include "temporary_folder.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

Called Call(const std::string& line) { return CallWith(line, RunBatch); }

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
  std::string all;
  for (const char* line :
       {"-o new/out --set DistDiff=0 -s MaxProc=99 -s EhoSens=50 lake.sl2",
        // Cropping switches the pictures off, and these can be switched on again; what is set already stays.
        "-o zero -s MakeCut=1 -s MakeGraf=1 -s MakeCut=1 -s UseTyp=0 lake.sl2", "-o why LAKE.SL2",
        "-o why -s DistDiff=9e6 -s boxLang=DEU trips/b.sl2", "-o none -s MakeGraf=0 lake.sl2",
        "-o out others.sl2", "-o out --answer no others.sl2", "-o cut cut.sl2",
        "-o out -s boxLang=DEU bad.sl2", "-o out bad.sl3", "-o out -sTargetName=e=f a.csv",
        "-o out none.sl2 lost/also.sl2 a.csv", "-v -o out -s Source=none.sl2", "-o out lost/",
        "-q -o out --no-picture -s TargetName=plain lake.sl2", "-q -o out trips none.sl2",
        "-j 256 -q -o deep -r trips", "-o never --write-ini ./lake.sl2 lake.sl2",
        "-o kept --write-ini kept.ini -s MakeCut=1 -s ScanSkip=7",
        "-o never --write-ini a.csv/b.ini lake.sl2", "-q -o read --ini kept.ini lake.sl2",
        "-o a.csv/x none.sl2", "-o lost a.csv", "-o out -s ViewOzi=1 -s MakeCut=1 -s SaveGraf=1 none.sl2",
        "-o never", "-o never a.csv \"\"", "-o never -s Source=", "-o never a.csv -s UseDcm",
        "-o never -s Sorce=x a.csv", "-o never -s UseDcm=2 a.csv", "-o out a.csv lake.sl2 ./a.csv",
        "-o never --ini faulty.ini a.csv", "-o never --ini none.ini a.csv", "--list-fields"}) {
    const Called called = Call(line);
    all.append(line).append("\n") += std::to_string(called.status) + "\n" + called.out + "and\n" + called.err;
  }
  std::set<std::string> made;
  for (const auto& entry : fs::recursive_directory_iterator("."))
    if (entry.is_regular_file())
      made.insert(entry.path().generic_string() + " " + std::to_string(entry.file_size()) + "\n");
  for (const std::string& file : made) all += file;
  EXPECT_TRUE(HasDigest(all, 0x892E26F24541CEF9));
  // The library of the options says these.
  for (const auto& [line, status, part] : {std::tuple("--help", 0, "-o,--target"),
                                           {"--version", 0, "sondrix-batch "},
                                           {"a.csv --answer maybe", 2, "maybe"},
                                           {"a.csv -j 257", 2, "257"}}) {
    const Called called = Call(line);
    EXPECT_EQ(called.status, status) << line;
    EXPECT_NE((status ? called.err : called.out).find(part), std::string::npos) << called.err;
  }
}

// A source that can't be read, an output that is lost and two of one name count, whatever else is done.
TEST_F(Batch, ALossHasItsLineAndTheStatus) {
  const std::string done = "a.csv: files successfully created, selected points 1 from 3 lines\n";
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"-o out none.sl2 a.csv", "none.sl2: ! error JobSl: 53. File not found\n" + done, ""},
      {"-o lost a.csv", done,
       "sondrix-batch: a.csv: ошибка WriteF: 75. Path/File access error: lost/a.plt\n"},
      {"-o out a.csv ./a.csv",
       "a.csv: ! \"./a.csv\" would write the same output \"out/a.txt\"\n"
       "a.csv: ! \"a.csv\" would write the same output \"out/a.txt\"\n",
       ""}};
  for (const auto& [line, out, err] : rows) {
    const Called called = Call(line);
    EXPECT_EQ(std::tuple(called.status, called.out, called.err), std::tuple(1, out, err));
  }
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
  EXPECT_TRUE(HasDigest(std::regex_replace(called.out, std::regex(R"("seconds":[-+.e\d]+)"), ""),
                        0x43742681627A78AD));
  EXPECT_EQ(called.status, 1);
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
  std::signal(SIGINT, SIG_DFL);  // which a caller in the background may have ignored
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
