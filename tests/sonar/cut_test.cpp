#include "sonar/cut.h"

#include "samples/echogram.h"
#include "test_run.h"

#include <tuple>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Ten scans of three channels; on the fourth the compass is silent.
std::vector<SampleFrame> Lake() {
  std::vector<SampleFrame> frames;
  for (int i = 0; i < 30; ++i) {
    constexpr int channels[] = {0, 2, 5};
    SampleFrame frame = Frame(channels[i % 3], 10.0F + 0.5F * static_cast<float>(i), 4'105'000 + 2 * i);
    frame.FrameIndex = 100 + i / 3;
    frame.TimeOffset = 100 * i;
    frame.Heading = i / 3 == 3 ? 0.0F : 2.5F;
    frame.Aux28 = 0x11223344;
    frame.Aux32 = 0x77;
    frame.Aux68 = 0x01020304;
    frame.Aux7C = 0x0A0B0C0D;
    frames.push_back(frame);
  }
  return frames;
}

// The SL2 of a sounder that records these frames only. What was SL3 keeps its size and lacks the date.
Bytes CropOf(int word, std::vector<SampleFrame> frames) {
  for (SampleFrame& frame : frames) {
    frame.FrameIndex.reset();
    if (word == 2) continue;
    frame.TimeBase = 0;
    frame.SampleCount = 1920;
    frame.Samples.resize(1920 + 0xA8 - 0x90);
  }
  Bytes bytes = EchogramBytes(2, frames);
  for (const std::size_t start : word == 3 ? FrameStarts(bytes) : std::vector<std::size_t>()) {
    PutU32(bytes, start + 0x84, 0x2BA);
    PutU32(bytes, start + 0x88, 0x01140001);
  }
  return bytes;
}

TEST(Cut, HoldsTheChannelsFramesButTheLast) {
  // The format word, the channel, whether coordinates are blanked and the heading replaces the course.
  for (const auto& [word, channel, hide, useRad] : {std::tuple(2, 0, false, false),
                                                    {2, 2, true, false},
                                                    {2, 5, false, true},
                                                    {3, 0, true, true},
                                                    {3, 2, false, true},
                                                    {3, 5, false, false}}) {
    TestRun test;
    test.settings.MakeCut = true;
    test.settings.HideCut = hide;
    test.settings.UseRad = useRad;
    test.settings.ScanSkip = "102";
    test.settings.ScanCut = "106";
    std::vector<SampleFrame> kept;
    for (SampleFrame frame : Lake()) {
      if (frame.Channel != channel || *frame.FrameIndex < 102 || *frame.FrameIndex > 105) continue;
      if (useRad && frame.Heading != 0) frame.Course = frame.Heading;
      if (hide) {
        frame.Course = 0;
        frame.MercX = frame.MercY = 0;
      }
      kept.push_back(frame);
    }
    EXPECT_TRUE(test.Source("lake.sl2", EchogramBytes(word, Lake())).Click(channel).ends_with(" * done"));
    const std::string cut = test.Out("lake_ch" + std::to_string(channel) + ".sl2");
    EXPECT_TRUE(Bytes(cut.begin(), cut.end()) == CropOf(word, kept)) << word << " " << channel;
  }
}

TEST(Cut, EndsThatLeaveASoundFile) {
  auto longSamples = Frame(2, 10);
  longSamples.FrameSize = 200;  // the samples run into what follows
  auto small = Frame(2, 10);    // than its header
  small.Samples.resize(10);
  small.FrameSize = 20;
  // What is read, what the log line says at the end, and how long the cropped file is.
  const std::tuple<Bytes, const char*, std::size_t> rows[] = {
      {EchogramBytes(2, {Frame(2, 10)}), " 100  scan 1 ^00:00:00 * done", 8},
      {EchogramBytes(2, {longSamples}), " 100log-file error 10% offset 208... * done", 8},
      {EchogramBytes(2, {small}), " ! error JobSl: 9. Subscript out of range", 8},
      {EchogramBytes(3, {small}), " * process stopped", 8},
      {{2, 0, 0}, " 100gin processing... * done", 8},
      {EchogramBytes(2, Lake()), " ! error JobSl: 55. File already open", 8 + 30 * 2064},
  };
  for (const auto& [source, end, length] : rows) {
    TestRun test;
    test.settings.MakeCut = true;
    test.settings.TargetName = "lake";
    test.Source(length == 8 ? "lake.sl2" : "out/../out/lake_ch2.sl2", source);
    EXPECT_EQ(test.Click(), end);
    EXPECT_EQ(test.Out("lake_ch2.sl2").size(), length) << end;
    EXPECT_EQ(test.Click(9), " ! 3D channel is not supported in SL2...");
    EXPECT_FALSE(test.HasOut("lake_ch9.sl2"));
  }
}

}  // namespace
}  // namespace sondrix
