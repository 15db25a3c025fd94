#include "sonar/cut.h"

#include "samples/echogram.h"
#include "sonar/sl_format.h"
#include "test_run.h"

#include <array>
#include <tuple>

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
      const auto samples = frame.subspan(std::size_t(format.HeaderLength), std::size_t(lead.SampleCount));
      frames.push_back({std::int64_t(at), SlBody(frame, format, lead), {samples.begin(), samples.end()}});
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

auto Body(const SlFrame& frame) {
  return std::tuple(frame.WaterDepth, frame.LowerLimit, frame.Speed, frame.MercX, frame.MercY, frame.Course,
                    frame.Heading, frame.TimeOffset);
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
      const auto* head = reinterpret_cast<const std::uint8_t*>(cut.data()) + after[i].start;
      // FrameOffset, the links of channels 0 and 2, PrevSize, Aux28, FrameIndex
      EXPECT_EQ(
          (std::array{U32At(head), U32At(head + 0x04), U32At(head + 0x0C), 0U + U16At(head + 0x1E),
                      U32At(head + 0x28), U32At(head + 0x24)}),
          (std::array{
              static_cast<std::uint32_t>(after[i].start), 0U, static_cast<std::uint32_t>(after[i].start),
              i == 0 ? 0U : after[i].fields.FrameSize + 0U, 0x11223344U, static_cast<std::uint32_t>(i)}));
      EXPECT_EQ(after[i].samples, before[i + 2].samples);
      EXPECT_EQ(Body(after[i].fields), Body(before[i + 2].fields));
    }
    test.settings.Source = test.OutPath("lake_ch2.sl2");
    test.settings.ScanSkip = test.settings.ScanCut = "";
    test.settings.TargetName = "again";
    test.Click();
    const std::string again = test.Out("again_ch2.sl2");
    EXPECT_TRUE(cut.starts_with(again) && again.size() == 8 + 3 * 2064) << again.size();
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
  using Courses = std::vector<float>;  // the second frame has no heading
  for (const auto& [hide, useRad, courses] :
       {std::tuple(false, false, Courses{1, 1}), {false, true, {2.5F, 1}}, {true, true, {0, 0}}}) {
    TestRun test;
    test.Source("lake.sl2", EchogramBytes(2, Lake(3)));
    test.settings.MakeCut = true;
    test.settings.HideCut = hide;
    test.settings.UseRad = useRad;
    test.Click(0);
    const auto frames = FramesOf(test.Out("lake_ch0.sl2"), 0);
    ASSERT_EQ(frames.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(frames[i].fields.Course, courses[i]);
      EXPECT_EQ(frames[i].fields.MercX == 0 && frames[i].fields.MercY == 0, hide);
      EXPECT_NE(frames[i].fields.WaterDepth, 0);
    }
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
      {EchogramBytes(2, std::span<const SampleFrame>()), " 100gin processing... * done", 8},
      {EchogramBytes(2, {Frame(2, 10)}), " 100  scan 1 ^00:00:00 * done", 8},
      {EchogramBytes(2, {longSamples}), " 100log-file error 10% offset 208... * done", 8},
      {EchogramBytes(2, {small}), " ! error JobSl: 9. Subscript out of range", 8},
      {EchogramBytes(3, {small}), " * process stopped", 8},
      {{2, 0, 0}, " 100gin processing... * done", 8},
      {EchogramBytes(2, Lake(3)), " ! error JobSl: 55. File already open", 8 + 6 * 2064},
  };
  for (const auto& [source, end, length] : rows) {
    TestRun test;
    test.settings.MakeCut = true;
    test.settings.TargetName = "lake";
    test.Source(length == 8 ? "lake.sl2" : "out/lake_ch2.sl2", source);
    EXPECT_EQ(test.Click(), end);
    EXPECT_EQ(test.Out("lake_ch2.sl2").size(), length) << end;
    test.settings.TargetName = "none";
    EXPECT_EQ(test.Click(9), " ! 3D channel is not supported in SL2...");
    EXPECT_FALSE(test.HasOut("none_ch9.sl2") || test.HasOut("none.csv"));
  }
}

TEST(Cut, RealRecordingsKeepTheirSamples) {
  const std::filesystem::path folder = RecordingsFolder();
  if (folder.empty()) GTEST_SKIP() << "the folder of real recordings isn't here";
  for (const int channel : {0, 2, 5}) {
    TestRun test;
    test.settings.Source = (folder / "echograms" / "tank-hds.sl3").string();
    test.settings.TargetName = "cut";
    test.settings.MakeCut = true;
    test.Click(channel);
    const auto before = FramesOf(ReadWhole(test.settings.Source), channel);
    const auto after = FramesOf(test.Out("cut_ch" + std::to_string(channel) + ".sl2"), channel);
    ASSERT_EQ(after.size() + 1, before.size());
    for (std::size_t i = 0; i < after.size(); ++i) ASSERT_EQ(after[i].samples, before[i].samples) << i;
  }
}

}  // namespace
}  // namespace sondrix
