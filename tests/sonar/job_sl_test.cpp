#include "sonar/job_sl.h"

#include "samples/damage.h"
#include "samples/echogram.h"
#include "test_run.h"

#ifdef __linux__
#include <sys/resource.h>
#endif

#include <cmath>
#include <csignal>
#include <cstdio>
#include <fstream>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A small recording: scans with a frame of Primary and one of Downscan each, a step of 2 m between two.
std::vector<SampleFrame> Scans(int count) {
  std::vector<SampleFrame> frames;
  for (int scan = 0; scan < count; ++scan) {
    for (const int channel : {0, 2}) {
      frames.push_back(Frame(channel, 10.0F + static_cast<float>(scan), 4'105'000 + 2 * scan));
      frames.back().FrameIndex = scan + 1;
    }
  }
  return frames;
}

TEST(JobSl, WritesALineForEachFrameOfTheChannel) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, Scans(10)));
  EXPECT_EQ(test.Click(), " 100%  scan 10 ^00:00:09 * done");
  const auto lines = test.OutLines("lake.csv");
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[0], "55.999628436,36.999896059,3.05,2016-05-25T14:00:00");
  EXPECT_EQ(lines[9], "55.999628436,37.0000583,5.79,2016-05-25T14:00:09");
  EXPECT_TRUE(test.Out("lake.csv").ends_with("\r\n\r\n"));
  EXPECT_FALSE(test.HasOut("lake_bad.txt"));
  EXPECT_EQ(test.settings.TargetName, "");
  EXPECT_TRUE(test.window.IsEnabled("DistDiff"));
}

TEST(JobSl, IntervalIsByFrameIndex) {
  const std::tuple<const char*, const char*, std::size_t, const char*> rows[] = {
      {"4", "", 7, " 100%  scan 11 ^00:00:09 * done"},
      {"4", "6", 3, " 100%  scan 7 * done"},
      {"", "3", 3, " 100%  scan 3 * done"},
      {"99", "", 0, " 100ip scan # 10 * done"},
      {"4", "4", 0, " ! selected interval # is incorrect..."},
      {"x", "", 0, " ! error JobSl: 13. Type mismatch"},
  };
  for (const auto& [skip, cut, count, end] : rows) {
    TestRun test;
    test.settings.ScanSkip = skip;
    test.settings.ScanCut = cut;
    EXPECT_EQ(test.Source("lake.sl2", EchogramBytes(2, Scans(10))).Click(), end);
    EXPECT_EQ(test.HasOut("lake.csv") ? test.OutLines("lake.csv").size() : 0, count) << end;
    EXPECT_TRUE(test.window.IsEnabled("ScanSkip"));
  }
}

// A search passes over parts of a hundredth of the source, so these sources are long enough for it to see the
// next frame's head.
TEST(JobSl, BadFrameIsReportedAndTheNextMarkerFound) {
  auto frames = Scans(40);
  frames[9].SampleCount = 1900;  // the fifth of Downscan
  TestRun test;
  EXPECT_EQ(test.Source("lake.sl2", EchogramBytes(2, frames)).Click(), " 100%  scan 39 ^00:00:39 * done");
  EXPECT_EQ(test.OutLines("lake.csv").size(), 39U);
  EXPECT_EQ(test.Out("lake.csv").find("2016-05-25T14:00:04"), std::string::npos);
  EXPECT_EQ(test.Out("lake_bad.txt"), " ! log-file error 11% offset 18584...\r\n\r\n");
}

TEST(JobSl, SilentlyBadFramesLeaveNoTrace) {
  auto frames = Scans(40);
  frames[3].WaterDepth = 1500.5F;
  frames[7].WaterDepth = 1500.0F;
  frames[11].LowerLimit = 0.01F;
  frames[15].WaterDepth = -1;
  frames[19].WaterDepth = std::nanf("");
  frames[23].WaterDepth = 0;  // accepted, but there is nothing to write
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, frames));
  // Four are bad; the third search starts late in its hundredth, so it passes over one more.
  EXPECT_EQ(test.Click(), " 100%  scan 35 ^00:00:39 * done");
  const auto lines = test.OutLines("lake.csv");
  ASSERT_EQ(lines.size(), 34U);
  EXPECT_EQ(lines[2], "55.999628436,36.99995014,457.2,2016-05-25T14:00:03");
  EXPECT_FALSE(test.HasOut("lake_bad.txt"));
}

TEST(JobSl, DamagedSourcesEndInOrder) {
  const std::string pastEnd = " ! error JobSl: 9. Subscript out of range", stopped = " * process stopped";
  const std::string oneLost = " 100%  scan 39 ^00:00:39 * done", unread = " 100gin processing... * done";
  // The last log line, the lines of the CSV, and the damages that end so.
  const std::tuple<std::string, std::size_t, std::vector<const char*>> rows[] = {
      {unread, 0, {"1-byte", "2-bytes", "3-bytes", "4-bytes", "5-bytes", "6-bytes", "7-bytes", "8-bytes"}},
      {pastEnd, 0, {"empty", "9-bytes"}},
      {" ! error JobSl: 6. Overflow", 0, {"format-word"}},
      {pastEnd, 39, {"cut-in-lead", "cut-in-header", "cut-in-samples"}},
      {oneLost, 39, {"frame-size-zero", "frame-size-negative", "sample-count-zero"}},
      {" 100%  scan 38 ^00:00:39 * done", 38, {"noise"}},
      {pastEnd, 20, {"noise-to-end"}},
      {stopped, 20, {"sl3-bad-frame", "sl3-frame-size-zero", "sl3-noise"}}};
  std::size_t count = 0;
  for (const auto& [end, lines, names] : rows) {
    for (const char* name : names) {
      const Damage& damage = *DamageOf(name);
      TestRun test;
      EXPECT_EQ(test.Source("lake.sl2", damage.Apply(CleanEchogram(damage.FormatWord))).Click(), end) << name;
      EXPECT_EQ(test.OutLines("lake.csv").size(), lines) << name;
      EXPECT_TRUE(test.window.IsEnabled("btnGO") && test.window.IsEnabled("Source")) << name;
      ++count;
    }
  }
  EXPECT_EQ(count, Damages().size());
}

TEST(JobSl, FilesThatCannotBeOpenedLeaveTheEarlierCsv) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, Scans(10))).Click();
  std::filesystem::remove(test.settings.Source);
  EXPECT_EQ(test.Click(), " ! error JobSl: 53. File not found");
  std::filesystem::create_directory(test.settings.Source);
  EXPECT_EQ(test.Click(), " ! error JobSl: 75. Path/File access error");
  test.settings.Source = (test.folder / "none" / "lake.sl2").string();
  EXPECT_EQ(test.Click(), " ! error JobSl: 76. Path not found");
  EXPECT_EQ(test.OutLines("lake.csv").size(), 10U);
  test.Source("full.sl2", EchogramBytes(2, Scans(10)));
  std::filesystem::create_directories(test.OutPath("full.csv") + "/full");
  EXPECT_EQ(test.Click().substr(0, 17), " ! error JobSl: 7");
}

#ifdef __linux__
TEST(JobSl, FullDiskStillWritesTheOtherOutputs) {
  // The CSV fails at the closing, or with its first piece in the middle of the run.
  for (const auto& [count, limit] : {std::pair(100, 2000), {1500, 20'000}}) {
    auto frames = Scans(10);
    frames[9].SampleCount = 1900;
    for (int i = 0; i < count; ++i) frames.push_back(Frame(2, 10));
    TestRun test;
    test.Source("lake.sl2", EchogramBytes(2, frames));
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small{static_cast<rlim_t>(limit), old.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string end = test.Click();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(end, " ! error JobSl: 61. Disk full");
    EXPECT_EQ(test.OutLines("lake_bad.txt").size(), 1U);
    EXPECT_EQ(test.settings.TargetName, "");
    EXPECT_TRUE(test.window.IsEnabled("btnGO") && !test.window.IsEnabled("RunEnd"));
  }
}
#endif

TEST(JobSl, MissingChannelIsAskedAbout) {
  std::vector<SampleFrame> frames;
  for (const int index : {1, 5000, 5001, 5002, 5003}) {
    frames.push_back(Frame(0, 10));
    frames.back().FrameIndex = index;
  }
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, frames));
  test.window.onAsk = [](std::size_t number) { return number < 2; };
  EXPECT_EQ(test.Click(), " * processing aborted by user");
  EXPECT_EQ(test.window.questions.size(), 2U);
  EXPECT_EQ(test.window.beeps, 2);
  test.settings.ScanSkip = "100";
  test.window.onAsk = nullptr;
  EXPECT_EQ(test.Click(), " 100%  scan 0 * done");
  EXPECT_EQ(test.window.questions.size(), 2U) << "5003 lies within 5000 scans of 100";
}

TEST(JobSl, PauseAndStopActAtTheNextFrame) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, Scans(10)));
  test.window.onPump = [&](int pump) {
    if (pump == 20 || pump == 24) PauseClick(test.run);
    EXPECT_TRUE(pump != 20 || test.window.captions["RunSet"] == ">>");
  };
  EXPECT_EQ(test.Click(), " 100%  scan 10 ^00:00:09 * done");
  EXPECT_EQ(test.window.waited, 3000);
  EXPECT_EQ(test.OutLines("lake.csv").size(), 10U);

  test.window.pumps = 0;
  bool mayClose = true;
  test.window.onPump = [&](int pump) {
    if (pump == 20) PauseClick(test.run);
    if (pump == 22) mayClose = CloseClick(test.run);
  };
  EXPECT_EQ(test.Click(), " * processing aborted by user");
  EXPECT_FALSE(mayClose);
  EXPECT_LT(test.OutLines("lake.csv").size(), 10U);
  EXPECT_EQ(test.window.captions["RunSet"], "II");
  EXPECT_TRUE(CloseClick(test.run));
}

// A sparse recording beyond the first chunk: frames of 32000 bytes, of which only the heads are written.
void WriteLong(TestRun& test, int frameCount, std::uintmax_t length) {
  SampleFrame pattern = Frame(2, 10);
  pattern.Samples.resize(32000 - 144);
  pattern.SampleCount = 1920;
  EchogramWriter writer(2);
  Bytes bytes;
  writer.Start(bytes);
  test.Source("long.sl2", bytes);
  std::fstream file(test.settings.Source, std::ios::in | std::ios::out | std::ios::binary);
  for (int i = 0; i < frameCount; ++i) {
    pattern.MercX += 2;
    bytes.clear();
    writer.Add(pattern, bytes);
    file.seekp(8 + 32000LL * i).write(reinterpret_cast<const char*>(bytes.data()), 144);
  }
  file.close();
  std::filesystem::resize_file(test.settings.Source, length);
}

TEST(JobSl, FrameAtTheSeamOfTwoChunksComesTwice) {
  TestRun test;
  WriteLong(test, 6260, 8 + 32000ULL * 6260);
  EXPECT_EQ(test.Click(), " 100%  scan 6261 ^01:44:19 * done");
  const auto lines = test.OutLines("long.csv");
  ASSERT_EQ(lines.size(), 6261U);
  EXPECT_EQ(lines[6249], lines[6250]);
  EXPECT_NE(lines[6250], lines[6251]);
  test.settings.DistDiff = "1";
  test.Click();
  EXPECT_EQ(test.OutLines("long.csv").size(), 6260U) << "the second falls to the filter";
  WriteLong(test, 6245, 200'100'000);  // the search in the zeros behind the last frame ends with the chunk
  EXPECT_EQ(test.Click(), " ! error JobSl: 9. Subscript out of range");
  EXPECT_EQ(test.OutLines("long.csv").size(), 6245U);
}

TEST(JobSl, RealRecordings) {
  const std::filesystem::path folder = RecordingsFolder();
  if (folder.empty()) GTEST_SKIP() << "the folder of real recordings isn't here";
  // The tank's Downscan and Sidescan carry no depth.
  for (const auto& [file, channel, count] : {std::tuple("river-elite.sl2", 0, 325U),
                                             {"river-elite.sl2", 2, 653U},
                                             {"tank-hds.sl3", 0, 113U},
                                             {"tank-hds.sl3", 2, 0U},
                                             {"tank-hds.sl3", 5, 0U}}) {
    SCOPED_TRACE(std::string(file) + " channel " + std::to_string(channel));
    TestRun test;
    test.settings.Source = (folder / "echograms" / file).string();
    const std::string stem = std::filesystem::path(file).stem().string();
    EXPECT_TRUE(test.Click(channel).ends_with(" * done")) << test.window.att;
    const std::string whole = test.Out(stem + ".csv");
    const auto lines = test.OutLines(stem + ".csv");
    EXPECT_EQ(lines.size(), count);
    std::string lastStamp;
    for (const std::string& line : lines) {
      double lat = 0, lon = 0, depth = 0;
      ASSERT_EQ(std::sscanf(line.c_str(), "%lf,%lf,%lf", &lat, &lon, &depth), 3) << line;
      const std::string stamp = line.substr(line.rfind(',') + 1);
      EXPECT_LE(lastStamp, stamp);
      lastStamp = stamp;
      EXPECT_TRUE(depth > 0 && depth < (stem == "tank-hds" ? 262.4 : 13.4) * 0.3048) << line;
      const bool near = lat > 53.23514 && lat < 53.23532 && lon > 39.95904 && lon < 39.95923;
      EXPECT_TRUE(stem == "tank-hds" || near) << line;
    }
    for (const std::size_t block : {1U, 1000U, 65536U}) {
      test.settings.TargetName = "small";
      ChannelClick(test.run, channel);
      JobSl(test.run, block);
      EXPECT_EQ(test.Out("small.csv"), whole) << "read in blocks of " << block;
    }
  }
}

}  // namespace
}  // namespace sondrix
