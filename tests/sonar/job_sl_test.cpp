#include "sonar/job_sl.h"

#include "core/number_text.h"
#include "samples/bulk.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "test_run.h"

#include <cmath>
#include <numbers>
#include <tuple>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Scans with a frame of Primary and one of Downscan each, at about 60 N 30 E. The boat is on an eastern
// course and heads south; it makes 2 m from scan to scan.
std::vector<SampleFrame> Scans(int count) {
  std::vector<SampleFrame> frames;
  for (int scan = 0; scan < count; ++scan) {
    for (const int channel : {0, 2}) {
      frames.push_back(
          Frame(channel, 10.0F + 0.1F * static_cast<float>(scan), 3'328'000 + 2 * scan, 8'362'000));
      frames.back().FrameIndex = scan + 1;
      frames.back().Course = std::numbers::pi_v<float> / 2;
      frames.back().Heading = std::numbers::pi_v<float>;
    }
  }
  return frames;
}

TEST(JobSl, BlocksOfReadingDontShowAndALostSourceKeepsTheCsv) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, Scans(10))).Click();
  const std::string whole = test.Out("lake.csv");
  for (const std::size_t block : {1U, 1000U, 20000U}) {
    test.settings.TargetName = "small";
    JobSl(test.run, block);
    EXPECT_EQ(test.Out("small.csv"), whole) << block;
  }
  test.settings.TargetName = "lake";
  std::filesystem::remove(test.settings.Source);
  EXPECT_EQ(test.Click(), " ! error JobSl: 53. File not found");
  EXPECT_EQ(test.Out("lake.csv"), whole);
}

// A search passes over parts of a hundredth of the source, so this one is long enough for it to see the next
// frame's head.
TEST(JobSl, BadFramesAreLeftOut) {
  auto frames = Scans(40);
  frames[1].FrameIndex = frames[1].SampleCount = 0;  // counts by its size
  frames[3].WaterDepth = 1500.5F;
  frames[7].WaterDepth = 1500.0F;
  frames[11].LowerLimit = 0.01F;
  frames[15].WaterDepth = -1;
  frames[19].WaterDepth = std::nanf("");
  frames[23].WaterDepth = 0;    // accepted, but there is nothing to write
  frames[26].SampleCount = -1;  // of another channel
  frames[33].SampleCount = 1900;
  TestRun test;
  test.settings.DefSlp = "7";
  test.Source("lake.sl2", EchogramBytes(2, frames));
  // Five are bad; the third search starts late in its hundredth, so it passes over one more.
  EXPECT_EQ(test.Click(), " 100%  scan 34 ^00:00:39 * done");
  EXPECT_EQ(test.Summary(), "finished 71 34 33 33 0:34/34 2:37/35 lake.csv lake_bad.txt");
  EXPECT_EQ(test.Out("lake_bad.txt"), " ! log-file error 41% offset 68120...\r\n\r\n");
  EXPECT_TRUE(HasDigest(test.Record(), 0x7C4F06D78E0C0317));
}

TEST(JobSl, DamagedSourcesEndInOrder) {
  const std::string pastEnd = " ! error JobSl: 9. Subscript out of range", stopped = " * process stopped";
  const std::string oneLost = " 100%  scan 39 ^00:00:39 * done", unread = " 100gin processing... * done";
  // The last log line and the damages that end so.
  const std::pair<std::string, std::vector<const char*>> rows[] = {
      {unread, {"1-byte", "2-bytes", "8-bytes"}},
      {pastEnd, {"empty", "9-bytes", "cut-in-lead", "cut-in-header", "cut-in-samples", "noise-to-end"}},
      {" ! error JobSl: 6. Overflow", {"format-word"}},
      {oneLost, {"frame-size-zero", "frame-size-negative", "sample-count-zero"}},
      {" 100%  scan 38 ^00:00:39 * done", {"noise"}},
      {stopped, {"sl3-bad-frame", "sl3-frame-size-zero", "sl3-noise"}}};
  std::string all;
  for (const auto& [end, names] : rows) {
    for (const char* name : names) {
      const Damage& damage = *DamageOf(name);
      TestRun test;
      EXPECT_EQ(test.Source("lake.sl2", damage.Apply(CleanEchogram(damage.FormatWord))).Click(), end) << name;
      EXPECT_TRUE(test.window.IsEnabled("btnGO") && test.window.IsEnabled("Source")) << name;
      all += name + test.Record();
    }
  }
  EXPECT_TRUE(HasDigest(all, 0x6D0B1B07A98FC4F4));
}

TEST(JobSl, MissingChannelIsAskedAbout) {
  std::vector<SampleFrame> frames(5, Frame(0, 10));
  for (int i = 1; i < 5; ++i) frames[i].FrameIndex = 4999 + i;
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, frames));
  test.window.onAsk = [](std::size_t number) { return number < 2; };
  EXPECT_EQ(test.Click(), " * processing aborted by user");
  EXPECT_EQ(test.Summary(), "stopped 4 0 0 0 0:4/4 lake.csv");
  test.settings.ScanSkip = "3";  // 5003 lies within 5000 scans of it
  EXPECT_EQ(test.Click(), " 100%  scan 0 * done");
  EXPECT_TRUE(test.window.questions.size() == 2 && test.window.beeps == 2);
}

TEST(JobSl, PauseAndStopActAtTheNextFrame) {
  TestRun test;
  bool mayClose = true;
  test.window.onPump = [&](int pump) {
    if (pump == 20 || pump == 24) PauseClick(test.run);
    EXPECT_TRUE(pump != 20 || test.window.captions["RunSet"] == ">>");
    if (pump == 28) mayClose = CloseClick(test.run);
  };
  EXPECT_EQ(test.Source("lake.sl2", EchogramBytes(2, Scans(10))).Click(), " * processing aborted by user");
  EXPECT_EQ(test.window.waited, 3000);
  EXPECT_EQ(test.Summary(), "stopped 15 7 7 7 0:8/8 2:7/7 lake.csv");
  EXPECT_EQ(test.window.captions["RunSet"], "II");
  EXPECT_TRUE(!mayClose && CloseClick(test.run));
}

// The marks' file, a mark's picture, the table as it grows, and a choice at the run's first pump.
TEST(JobSl, NoOutputTakesThePlaceOfItsSource) {
  for (const std::string suffix : {"_usr.wpt", ".bmp", ".csv.part", ""}) {
    TestRun test;
    test.Source("lake.sl2", EchogramBytes(2, Scans(10)));
    const std::string source = test.settings.Source, bytes = ReadWhole(source);
    for (int index = 1; index <= 10 && !suffix.empty(); ++index) {
      const std::string name = suffix == ".bmp" ? std::to_string(index) : "lake";
      std::error_code isThere;
      std::filesystem::create_hard_link(source, test.OutPath(name + suffix), isThere);
    }
    test.window.onPump = [&](int pump) {
      if (suffix.empty() && pump == 1) test.settings.Source = test.OutPath("lake.csv");
      if (pump == 8) MarkClick(test.run, MarkFish);
    };
    const std::string end = test.Click();
    EXPECT_EQ(ReadWhole(source), bytes) << suffix;
    EXPECT_EQ(end.find("55. File already open") != std::string::npos, !suffix.empty()) << suffix << end;
  }
}

TEST(JobSl, FrameAtTheSeamOfTwoChunksComesTwice) {
  TestRun test;
  test.settings.Source = (test.folder / "long.sl2").string();
  ASSERT_GT(WriteBulk(test.settings.Source, 201'000'000, true), 0);
  EXPECT_EQ(test.Click(), " 100%  scan 1535 * done");
  const auto lines = test.OutLines("long.csv");
  EXPECT_EQ(lines.size(), 1535U);
  EXPECT_EQ(std::ranges::adjacent_find(lines) - lines.begin(), 1526);
  // The search in the zeros behind the last frame ends with the chunk.
  std::filesystem::resize_file(test.settings.Source, 199'800'000);
  std::filesystem::resize_file(test.settings.Source, 200'100'000);
  EXPECT_EQ(test.Click(), " ! error JobSl: 9. Subscript out of range");
  EXPECT_EQ(test.OutLines("long.csv").size(), 1525U);
}

TEST(Cut, EndsThatLeaveASoundFile) {
  auto longSamples = Frame(2, 10), small = Frame(2, 10);
  longSamples.FrameSize = 200;  // the samples run into what follows
  small.Samples.resize(10);
  small.FrameSize = 20;  // less than its header
  // What is read, what the log line says at the end, and how long the cropped file is.
  const std::tuple<Bytes, const char*, std::size_t> rows[] = {
      {EchogramBytes(2, {longSamples}), " 100log-file error 10% offset 208... * done", 8},
      {EchogramBytes(2, {small}), " ! error JobSl: 9. Subscript out of range", 8},
      {CleanEchogram(2), " ! error JobSl: 55. File already open", 8 + 80 * 2064},
  };
  for (const auto& [source, end, length] : rows) {
    TestRun test;
    test.Set("MakeCut=1 TargetName=lake");
    test.Source(length == 8 ? "lake.sl2" : "out/../out/lake_ch2.sl2", source);
    EXPECT_EQ(test.Click(), end);
    EXPECT_EQ(test.Out("lake_ch2.sl2").size(), length) << end;
    EXPECT_EQ(test.Click(9), " ! 3D channel is not supported in SL2...");
    EXPECT_FALSE(test.HasOut("lake_ch9.sl2"));
  }
}

// Lengths that aren't the lists', and soundings without a number or beyond what a point holds.
TEST(JobSl3D, HostileLists) {
  const float nan = std::nanf("");
  std::string all;
  for (const int left : {16, 32767, -32768, -80, -84, 0, 11, 12})
    for (const int right : {0, 16, 17000, 32767})
      for (const SampleSounding& sounding :
           {SampleSounding{10, 10}, {0, 0}, {10, 255.5F}, {10, 255.4F}, {-0.13F, 10}, {nan, 10}, {10, nan}}) {
        SampleFrame frame = Frame3D(std::span(&sounding, 1), std::span(&sounding, 1));
        PutU16(frame.Samples, 4, static_cast<std::uint16_t>(left));
        PutU16(frame.Samples, 8, static_cast<std::uint16_t>(right));
        TestRun test;
        test.Set(right == 32767 ? "MakeGraf=1 MaxSide= MaxProc=50" : "MakeGraf=1 MaxSide= MaxProc=");
        test.Source("lake.sl3", EchogramBytes(3, {frame}));
        all += test.Click(9) + "\n";
      }
  EXPECT_TRUE(HasDigest(all, 0xC0D1C295980CEDD6));
}

// The depth of a frame is its number.
TEST(TrackPoint, LiveTrackStepsWithTheSpeed) {
  std::vector<SampleFrame> frames;
  for (int i = 0; i <= 500; ++i) {
    frames.push_back(Frame(2, static_cast<float>(i) + 0.04F, 4'105'000 + i, 7'533'000, 320));
    frames.back().Speed = i < 200 ? 6.0F : i < 300 ? 3.0F : 2.9F;
  }
  TestRun test;
  test.settings.ViewOzi = true;
  std::string points;  // depth:code
  test.link.CreateTrackPoint = [&](int, int code, double, double, double feet, double) {
    points += LocText(feet) + ":" + std::to_string(code) + " ";
  };
  test.Source("a.sl2", EchogramBytes(2, frames)).Click();
  EXPECT_EQ(points, "0:1 50:0 100:0 150:0 200:0 300:0 400:0 ");
}

}  // namespace
}  // namespace sondrix
