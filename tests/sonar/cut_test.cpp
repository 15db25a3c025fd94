#include "sonar/cut.h"

#include "samples/echogram.h"
#include "sonar/sl_format.h"
#include "test_run.h"

#include <bit>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Frames of a channel in a source: start, decoded fields, samples.
struct ReadFrame {
  std::int64_t start;
  SlFrame fields;
  Bytes samples;
};

std::vector<ReadFrame> FramesOf(std::string_view source, int channel) {
  const Bytes bytes(source.begin(), source.end());
  const SlFormat format = SlFormatOf(U16At(bytes.data()));
  std::vector<ReadFrame> frames;
  for (std::size_t at = 8; at < bytes.size();) {
    const auto frame = std::span(bytes).subspan(at);
    const SlLeadFields lead = SlLead(frame, format);
    if (lead.Channel == channel) {
      const auto samples = frame.subspan(static_cast<std::size_t>(format.HeaderLength),
                                         static_cast<std::size_t>(lead.SampleCount));
      frames.push_back(
          {static_cast<std::int64_t>(at), SlBody(frame, format, lead), {samples.begin(), samples.end()}});
    }
    at += static_cast<std::size_t>(lead.FrameSize);
  }
  return frames;
}

std::vector<SampleFrame> Lake(int scans) {
  std::vector<SampleFrame> frames;
  for (int scan = 0; scan < scans; ++scan) {
    for (const int channel : {0, 2}) {
      frames.push_back(Frame(channel, 10.0F + 0.5F * static_cast<float>(scan), 4'105'000 + 2 * scan));
      frames.back().FrameIndex = 100 + scan;
      frames.back().Heading = scan == 1 ? 0.0F : 2.5F;
      frames.back().Aux28 = 0x11223344;
    }
  }
  return frames;
}

TEST(Cut, HoldsTheChannelsFramesButTheLast) {
  for (const int word : {2, 3}) {
    TestRun test;
    const Bytes source = EchogramBytes(word, Lake(10));
    test.Source("lake.sl2", source);
    test.settings.MakeCut = true;
    test.settings.ScanSkip = "102";
    test.settings.ScanCut = "106";
    EXPECT_TRUE(test.Click().ends_with(" * done")) << test.window.att;
    const std::string cut = test.Out("lake_ch2.sl2");
    EXPECT_EQ(cut.substr(0, 8), std::string("\2\0\0\0\xB5\7\0\0", 8));
    const auto before = FramesOf({reinterpret_cast<const char*>(source.data()), source.size()}, 2);
    const auto after = FramesOf(cut, 2);
    ASSERT_EQ(after.size(), 4U) << "five were copied";
    for (std::size_t i = 0; i < after.size(); ++i) {
      const SlFrame& old = before[i + 2].fields;
      const SlFrame& frame = after[i].fields;
      const auto* head = reinterpret_cast<const std::uint8_t*>(cut.data()) + after[i].start;
      EXPECT_EQ(U32At(head), after[i].start);
      EXPECT_EQ(U32At(head + 0x0C), after[i].start) << "the link of channel 2";
      EXPECT_EQ(U32At(head + 0x04), 0U);
      EXPECT_EQ(U16At(head + 0x1E), i == 0 ? 0 : frame.FrameSize);
      EXPECT_EQ(U32At(head + 0x28), 0x11223344U);
      EXPECT_EQ(frame.FrameIndex, static_cast<std::int32_t>(i));
      EXPECT_EQ(after[i].samples, before[i + 2].samples);
      EXPECT_EQ(std::tuple(frame.WaterDepth, frame.LowerLimit, frame.Speed, frame.MercX, frame.MercY,
                           frame.Course, frame.Heading, frame.TimeOffset),
                std::tuple(old.WaterDepth, old.LowerLimit, old.Speed, old.MercX, old.MercY, old.Course,
                           old.Heading, old.TimeOffset));
    }
  }
}

TEST(Cut, Sl3FieldsMoveToTheirSl2Places) {
  TestRun test;
  SampleFrame frame = Frame(5, 10);
  frame.Aux32 = 0x77;
  frame.Aux68 = 0x01020304;
  frame.Aux7C = 0x0A0B0C0D;
  test.Source("lake.sl3", EchogramBytes(3, {frame, frame}));
  test.settings.MakeCut = true;
  test.Click(5);
  const std::string cut = test.Out("lake_ch5.sl2");
  ASSERT_EQ(cut.size(), 8 + 1920 + 0xA8U);
  const auto* head = reinterpret_cast<const std::uint8_t*>(cut.data()) + 8;
  const std::vector<std::pair<int, std::uint32_t>> words = {
      {0x20, 0x07800005}, {0x30, 0x00770000}, {0x34, 0},          {0x38, 0},         {0x48, 0},
      {0x4C, 0},          {0x50, 0xBF800000}, {0x5C, 0xBF800000}, {0x60, 0},         {0x68, 0x01020304},
      {0x74, 0},          {0x7C, 0x0A0B0C0D}, {0x84, 0x2BA},      {0x88, 0x01140001}};
  for (const auto& [offset, word] : words) EXPECT_EQ(U32At(head + offset), word) << std::hex << offset;
}

TEST(Cut, CoordinatesCanBeBlankedAndTheCourseReplaced) {
  struct Row {
    bool hide, useRad;
    std::vector<float> courses;  // the second frame has no heading
  };
  for (const Row& row : {Row{false, false, {1, 1}}, {false, true, {2.5F, 1}}, {true, true, {0, 0}}}) {
    TestRun test;
    test.Source("lake.sl2", EchogramBytes(2, Lake(3)));
    test.settings.MakeCut = true;
    test.settings.HideCut = row.hide;
    test.settings.UseRad = row.useRad;
    test.Click(0);
    const auto frames = FramesOf(test.Out("lake_ch0.sl2"), 0);
    ASSERT_EQ(frames.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(frames[i].fields.Course, row.courses[i]);
      EXPECT_EQ(frames[i].fields.MercX == 0 && frames[i].fields.MercY == 0, row.hide);
      EXPECT_NE(frames[i].fields.WaterDepth, 0);
    }
  }
}

TEST(Cut, EndsThatLeaveASoundFile) {
  struct Row {
    const char* what;
    Bytes source;
    int channel;
    std::string end;
    std::size_t length;  // of the cropped file
  };
  auto longSamples = Frame(2, 10);
  longSamples.FrameSize = 200;  // the samples run into what follows
  auto small = Frame(2, 10);
  small.Samples.resize(10);
  small.FrameSize = 20;
  const std::string pastEnd = " ! error JobSl: 9. Subscript out of range";
  const std::string full = " 100  scan 1 ^00:00:00 * done";
  const std::vector<Row> rows = {
      {"no frame", EchogramBytes(2, std::span<const SampleFrame>()), 2, " 100gin processing... * done", 8},
      {"one frame", EchogramBytes(2, {Frame(2, 10)}), 2, full, 8},
      {"samples beyond the frame", EchogramBytes(2, {longSamples}), 2,
       " 100log-file error 10% offset 208... * done", 8},
      {"a frame smaller than its header", EchogramBytes(2, {small}), 2, pastEnd, 8},
      {"sl3, the same", EchogramBytes(3, {small}), 2, " * process stopped", 8},
      {"three bytes", {2, 0, 0}, 2, " 100gin processing... * done", 8},
  };
  for (const Row& row : rows) {
    TestRun test;
    test.Source("lake.sl2", row.source);
    test.settings.MakeCut = true;
    const std::string end = test.Click(row.channel);
    EXPECT_EQ(end, row.end) << row.what;
    EXPECT_EQ(test.HasOut("lake_ch2.sl2") ? test.Out("lake_ch2.sl2").size() : 0, row.length) << row.what;
  }
  TestRun test;
  test.Source("lake.sl3", EchogramBytes(3, {Frame(0, 10)}));
  test.settings.MakeCut = true;
  EXPECT_EQ(test.Click(9), " ! 3D channel is not supported in SL2...");
  EXPECT_FALSE(test.HasOut("lake_ch9.sl2") || test.HasOut("lake.csv"));
}

TEST(Cut, NeverOverwritesItsSource) {
  TestRun test;
  test.Source("out/lake_ch2.sl2", EchogramBytes(2, Lake(3)));
  test.settings.MakeCut = true;
  test.settings.TargetName = "lake";
  EXPECT_EQ(test.Click(), " ! error JobSl: 55. File already open");
  EXPECT_EQ(test.Out("lake_ch2.sl2").size(), 8 + 6 * 2064U);
}

TEST(Cut, RealRecordingsKeepTheirSamples) {
  const std::filesystem::path folder = RecordingsFolder();
  if (folder.empty()) GTEST_SKIP() << "the folder of real recordings isn't here";
  for (const auto& [file, channel] :
       {std::pair("tank-hds.sl3", 0), {"tank-hds.sl3", 2}, {"tank-hds.sl3", 5}, {"river-elite.sl2", 2}}) {
    SCOPED_TRACE(file + std::to_string(channel));
    TestRun test;
    test.settings.Source = (folder / "echograms" / file).string();
    test.settings.TargetName = "cut";
    test.settings.MakeCut = true;
    test.Click(channel);
    const std::string name = "cut_ch" + std::to_string(channel) + ".sl2";
    const std::string cut = test.Out(name);
    const auto before = FramesOf(ReadWhole(test.settings.Source), channel);
    const auto after = FramesOf(cut, channel);
    ASSERT_EQ(after.size() + 1, before.size());
    for (std::size_t i = 0; i < after.size(); ++i) ASSERT_EQ(after[i].samples, before[i].samples) << i;
    test.settings.Source = test.OutPath(name);
    test.settings.TargetName = "again";
    test.Click(channel);
    const std::string again = test.Out("again_ch" + std::to_string(channel) + ".sl2");
    EXPECT_EQ(again, cut.substr(0, again.size()));
  }
}

}  // namespace
}  // namespace sondrix
