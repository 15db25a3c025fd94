#include "app/batch/batch.h"

#include "app/batch/batch_window.h"
#include "app/batch/transcript.h"
#include "app/ini_file.h"
#include "app/interrupt.h"
#include "app/session.h"
#include "core/files.h"
#include "samples/echogram.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
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
  auto cut = EchogramBytes(2, std::vector(3, Frame(2, 10)));
  cut.resize(cut.size() - 9);
  WriteBytes("cut.sl2", cut);
  SampleFrame longSamples = Frame(2, 11);
  longSamples.FrameSize = 200;  // its samples run into what follows
  WriteBytes("bad.sl2", EchogramBytes(2, {longSamples}));
  WriteBytes("bad.sl3", EchogramBytes(3, {Frame(2, 10), longSamples, Frame(2, 10), Frame(2, 10)}));
  OutputFile("a.csv").Write("lat,lon,depth\n55.1,37.1,5\n");
  WriteBytes("LAKE.SL2", EchogramBytes(2, {Frame(2, 10)}));
  SampleFrame far = Frame(2, 10), seven = Frame(7, 12);
  far.FrameIndex = 6804;
  WriteBytes("far.sl2", EchogramBytes(2, {seven, far, Frame(5, 0), Frame(5, 0)}));
  OutputFile("head.csv").Write("Channel,b\r\nPrimary,1,1,1,1,0.000000,1\r\nPrimary,1,1,1,1,3,1\r\n");
  OutputFile("faulty.ini").Write("[Main]\nMakeCut=5\n");
  fs::create_directories("trips/below");
  for (const char* name : {"trips/b.sl2", "trips/below/d.sl2", "trips/c.SL2"}) fs::copy("lake.sl2", name);
  fs::copy("a.csv", "trips/b.csv");
  const std::string points = "a.csv: files successfully created, selected points 1 from 3 lines\n";
  const std::string missing = " ! error JobSl: 53. File not found\n";
  const std::string question =
      "Channel not found: No frame of Downscan before scan 5001, which is 99% of the file. Go on to the next "
      "scan? ";
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
      // Why a run gave no points.
      {"-o why LAKE.SL2", 1, "LAKE.SL2: ! source file without delimiters ';' or ','...\n",
       "LAKE.SL2: 0 points: the extension \".SL2\" is read as a table, it has to be \".sl2\"\n"},
      {"-o why -s UseTyp=5 far.sl2", 0, "far.sl2: 100%  scan 2 ^00:00:01 * done\n",
       "far.sl2: 0 points: Sidescan has no depth; Downscan has 1 of 1; channel 7 has 1 of 1\n"},
      {"-o why -s UseTyp=0 far.sl2 --answer no", 0, "far.sl2: * processing aborted by user\n",
       "far.sl2: 0 points: the run was stopped before the first point\n"},
      {"-o why -s ScanSkip=7000 -s ScanCut=9000 far.sl2", 0, "far.sl2: 100%  scan 0 * done\n",
       "far.sl2: 0 points: the interval 7000 to 9000 lies outside the indices 6804 to 6804\n"},
      {"-o why -s ScanCut=70 far.sl2", 0, "far.sl2: 100  scan 0 * done\n",
       "far.sl2: 0 points: the interval to 70 ends before the first index 6804\n"},
      {"-o why -s DistDiff=9e6 -s boxLang=DEU far.sl2", 0, "far.sl2: 100%  Scan 1 * Ausgeführt\n",
       "far.sl2: 0 Punkte: jede Lotung (1) fiel durch DistDiff = 9000000 m weg\n"},
      {"-o why head.csv", 0, "head.csv: files successfully created, selected points 0 from 4 lines\n",
       "head.csv: 0 points: no row of Downscan; Primary has 1 of 2\n"},
      {"-o none -s MakeGraf=0 lake.sl2", 0, "lake.sl2: 100%  scan 2 ^00:00:01 * done\n"},
      {"-o out others.sl2", 0, "others.sl2: 100%  scan 0 * done\n", question + "yes\n"},
      {"-o out --answer no others.sl2", 0, "others.sl2: * processing aborted by user\n", question + "no\n"},
      {"-o cut cut.sl2", 1, "cut.sl2: ! error JobSl: 9. Subscript out of range\n"},
      {"-o out -s boxLang=DEU bad.sl2", 1, "bad.sl2: 100Log-Fehler10% Offset 208... * Ausgeführt\n"},
      {"-o out bad.sl3", 1, "bad.sl3: * process stopped\n"},
      {"-o out -sTargetName=e=f a.csv", 0, points},
      {"-o out none.sl2 lost/also.sl2 a.csv", 1, "none.sl2:" + missing + "also.sl2:" + missing + points},
      {"-o out none.mp", 1, "none.mp: * specify the source file in 'polish' format to continue\n"},
      {"-v -o out -s Source=none.sl2", 1,
       "none.sl2: begin processing...\nnone.sl2: 100gin processing... * done\nnone.sl2:" + missing},
      {"-o out lost/", 1, "", "lost/: nothing in it can be converted"},
      {"-q -o out --no-picture -s TargetName=plain lake.sl2", 0, ""},
      {"-q -o out trips none.sl2", 1, "none.sl2:" + missing,
       "b.csv: left out, it has the name of an output of"},
      {"-q -o deep -r trips", 0, "", "c.SL2: left out, its extension must be spelt .sl2"},
      {"-o never --write-ini lake.sl2 lake.sl2", 1, "", "lake.sl2: is a source"},
      {"-o kept --write-ini kept.ini -s MakeCut=1 -s ScanSkip=7", 0, ""},
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
  EXPECT_FALSE(fs::exists("none/lake_ch2.bmp") || fs::exists("out/others_ch2.bmp") ||
               fs::exists("cut/cut_ch2.bmp"));
  EXPECT_TRUE(fs::exists("out/e=f.txt"));
  EXPECT_TRUE(fs::exists("out/plain.csv") && !fs::exists("out/plain_ch2.bmp"));
  EXPECT_TRUE(fs::exists("out/b.csv") && !fs::exists("out/d.csv") && fs::exists("deep/d.csv"));
  EXPECT_EQ(IRead("kept.ini", "Main", "ScanSkip") + IRead("kept.ini", "Main", "MakeGraf"), "70");
  EXPECT_FALSE(fs::exists("never"));
  fs::current_path(before);
  fs::remove_all(folder);
}

// What a call prints, with the outputs' bytes in the end.
std::string Printed(const std::string& line, const fs::path& folder) {
  std::istringstream words(line);
  testing::internal::CaptureStdout();
  RunBatch(std::vector<std::string>(std::istream_iterator<std::string>(words), {}));
  std::fflush(stdout);
  std::string printed = testing::internal::GetCapturedStdout();
  std::set<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder)) files.insert(entry.path().string());
  for (const std::string& file : files) printed += fs::path(file).filename().string() + ReadWhole(file);
  return printed;
}

TEST(Batch, SourcesAtATimeLeaveTheSameBytesAndLines) {
  const fs::path folder = fs::path(testing::TempDir()) / "sondrix_batch_jobs";
  fs::remove_all(folder);
  fs::create_directories(folder);
  std::string sources;
  for (int i = 0; i < 6; ++i) {
    const std::string path = (folder / ("lake" + std::to_string(i) + ".sl2")).string();
    WriteBytes(path, EchogramBytes(2, std::vector(static_cast<std::size_t>(900 - 150 * i),
                                                  Frame(2, 10.0F + static_cast<float>(i)))));
    sources += " " + path;
  }
  const auto convert = [&](const std::string& jobs) {
    const fs::path out = folder / "out";
    fs::remove_all(out);
    return Printed("-v -s DistDiff=0 " + jobs + " -o " + out.string() + sources, out);
  };
  const std::string alone = convert("-j 1");
  EXPECT_GT(alone.size(), 100'000u);
  EXPECT_EQ(convert("-j 3"), alone);
  fs::remove_all(folder);
}

TEST(Batch, JsonHoldsTheRecord) {
  const fs::path folder = fs::path(testing::TempDir()) / "sondrix_batch_json";
  fs::remove_all(folder);
  fs::create_directories(folder / "out" / "lake_bad.txt");
  const std::string lake = (folder / "lake.sl2").string();
  WriteBytes(lake, EchogramBytes(2, {Frame(2, 10), Frame(0, 0), Frame(2, 0), Frame(2, 11)}));
  const fs::path out = folder / "out";
  const std::string line = Printed("--json -o " + out.string() + " " + lake + " " + lake + ".none.sl2",
                                   folder / "out" / "lake_bad.txt");
  const auto object = nlohmann::json::parse(line.substr(0, line.find('\n')));
  EXPECT_EQ(object["source"], lake);
  EXPECT_EQ(object["result"], "finished");
  EXPECT_EQ(object["soundings"], 3);
  EXPECT_EQ(object["withDepth"], 2);
  EXPECT_EQ(object["points"], 1);  // the others lie at its place
  EXPECT_EQ(object["channels"].dump(), R"([{"channel":0,"frames":1,"name":"Primary","withDepth":0},)"
                                       R"({"channel":2,"frames":3,"name":"Downscan","withDepth":2}])");
  ASSERT_EQ(object["outputs"].size(), 3u);
  EXPECT_EQ(object["outputs"][0]["path"], (out / "lake.csv").string());
  EXPECT_TRUE(object["outputs"][0]["whole"] == true && object["outputs"][1]["whole"] == false);
  EXPECT_EQ(object["lost"][0]["number"], 75);
  const auto second = nlohmann::json::parse(line.substr(line.find('\n') + 1));
  EXPECT_TRUE(second["result"] == "failed" && second["fault"]["number"] == 53) << second;
  fs::remove_all(folder);
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
