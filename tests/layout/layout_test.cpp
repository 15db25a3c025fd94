#include "core/fault.h"
#include "core/files.h"
#include "fault_in.h"
#include "samples/echogram.h"
#include "sonar/layout/find_frame.h"
#include "sonar/layout/lists_3d.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"
#include "sonar/layout/sl_verdict.h"
#include "sonar/layout/words.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace sondrix {
namespace {

// A file of these bytes, for the time of a test.
struct Recording {
  explicit Recording(const std::vector<std::uint8_t>& bytes)
      : path((std::filesystem::temp_directory_path() /
              ("sondrix.layout." + std::to_string(reinterpret_cast<std::uintptr_t>(this))))
                 .string()) {
    OutputFile(path).Write(bytes);
  }
  ~Recording() { std::filesystem::remove(path); }
  std::string path;
};

TEST(Layout, FieldsComeFromTheirPlacesInBothFormats) {
  for (const int word : {2, 1, 3}) {
    SampleFrame sample = Frame(5, 12.5F, 4'100'001, -7'500'002, 300);
    sample.LowerLimit = 50.5F;
    sample.Speed = 2.5F;
    sample.Course = 0.5F;
    sample.Heading = 0.75F;
    sample.FrameIndex = 77;
    sample.TimeOffset = 4321;
    sample.Aux28 = 0x11223344;
    sample.Aux68 = 0x01020304;
    sample.Aux7C = 0x0A0B0C0D;
    const std::vector<std::uint8_t> bytes = EchogramBytes(word, {sample});
    const auto frame = std::span(bytes).subspan(FileHeaderLength);
    const SlFormat format = SlFormatOf(static_cast<std::uint16_t>(word));
    const SlLeadFields lead = SlLead(frame, format);
    const SlFrame body = SlBody(frame, format, lead);
    EXPECT_EQ(lead.FrameSize, static_cast<int>(frame.size())) << word;
    EXPECT_EQ(lead.Channel, 5);
    EXPECT_EQ(lead.SampleCount, 300);
    EXPECT_EQ(lead.FrameIndex, 77);
    EXPECT_EQ(lead.TimeBase, sample.TimeBase);
    if (word == 1) continue;  // its samples lie over the body fields
    EXPECT_EQ(body.LowerLimit, 50.5F) << word;
    EXPECT_EQ(body.WaterDepth, 12.5F);
    EXPECT_EQ(body.Speed, 2.5F);
    EXPECT_EQ(body.MercX, 4'100'001);
    EXPECT_EQ(body.MercY, -7'500'002);
    EXPECT_EQ(body.Course, 0.5F);
    EXPECT_EQ(body.Heading, 0.75F);
    EXPECT_EQ(body.TimeOffset, 4321);
    const SlOffsets& at = *format.offsets;
    EXPECT_EQ(I32At(&frame[at.Aux28]), 0x11223344);
    EXPECT_EQ(I32At(&frame[at.Aux68]), 0x01020304);
    EXPECT_EQ(I32At(&frame[at.Aux7C]), 0x0A0B0C0D);
  }
}

TEST(Layout, ListsEndWithThePayload) {
  const SampleSounding left[] = {{10, 20}, {11, 21}, {12, 22}}, right[] = {{30, 40}};
  const std::vector<std::uint8_t> payload = Payload3D(left, right);
  const auto rightStart = LeftListStart + 32;
  std::vector<Entry3D> entries;
  const auto distances = [&](std::size_t cut, std::int64_t start, std::int16_t bytes) {
    DecodeList3D(std::span(payload).first(payload.size() - cut), start, bytes, entries);
    std::string text;
    for (const Entry3D& entry : entries) text += std::to_string(static_cast<int>(entry.Distance)) + " ";
    return text;
  };
  EXPECT_EQ(distances(0, LeftListStart, 32), "20 21 22 ");
  EXPECT_EQ(entries[2].Depth, 12);
  EXPECT_EQ(EntriesOf(480), 59);
  EXPECT_EQ(distances(0, rightStart, 16), "40 ");
  EXPECT_EQ(distances(0, LeftListStart, 0), "");
  EXPECT_EQ(distances(0, -100, 16), "");
  EXPECT_EQ(LastDistance3D(payload, LeftListStart, 32), 22.0F);
  EXPECT_EQ(LastDistance3D(payload, rightStart, 17000), std::nullopt);
  const std::size_t fromLastLeft = payload.size() - static_cast<std::size_t>(LeftListStart + 24);
  EXPECT_EQ(distances(fromLastLeft - 3, LeftListStart, 32), "20 21 ");
  EXPECT_EQ(distances(fromLastLeft - 4, LeftListStart, 32), "20 21 22 ");
}

TEST(Layout, SearchReportsAndLeapsOverAHundredthAfterAHundredth) {
  std::vector<std::uint8_t> bytes(30'000);
  constexpr std::int64_t frame = 20'000;
  PutU16(bytes, frame + MarkerOffset, 2);
  PutU16(bytes, frame + MarkerOffset + 2, 0x0780);
  const Recording recording(bytes);
  // Searched are 302 bytes of 604: of the last places in front of a leap one is looked at, one not.
  const std::tuple<std::int64_t, const char*, std::vector<std::int64_t>> rows[] = {
      {frame - 220, "found", {frame - 120, frame - 20}},
      {frame + 32 - 604 - 300, "found", {19'228, 19'328, 19'428, 19'832, 19'932, 20'032}},
      {29'100, "fault 9", {29'200, 29'300, 29'400, 29'804, 29'904}},
      {29'600, "past the end", {29'700, 29'800, 29'900}},
  };
  for (const auto& [first, end, positions] : rows) {
    SlSource source(recording.path);
    FrameSearch search{.At = first};
    std::vector<std::int64_t> reports;
    SearchStep step;
    const int fault = FaultIn([&] {
      while (!step.found && !step.isPastEnd) {
        step = StepSearch(search, source, ResyncMarkerOf(Channel::Downscan));
        if (step.isReportDue) reports.push_back(step.position);
      }
    });
    EXPECT_EQ(fault ? "fault 9" : step.found ? "found" : "past the end", std::string(end)) << first;
    EXPECT_EQ(reports, positions) << first;
    EXPECT_TRUE(!step.found || search.At - MarkerOffset == frame) << first;
  }
  // The place looked at last in front of a leap, and the first that isn't.
  for (const int way : {300, 302}) {
    SlSource source(recording.path);
    FrameSearch search{.At = frame + MarkerOffset - way};
    for (int i = 0; i < way / 2; ++i) StepSearch(search, source, 0x0780FFFF);
    EXPECT_EQ(StepSearch(search, source, ResyncMarkerOf(Channel::Downscan)).found, way == 300);
  }
}

TEST(Layout, AFrameIsJudgedByItsLead) {
  const SlFormat format = SlFormatOf(2);
  const auto good = SlVerdict::Good, bad = SlVerdict::Bad, other = SlVerdict::OtherChannel;
  // The chosen channel; size, channel, samples and index of a frame; the samples known; what counts as its
  // samples, and what it is.
  const std::tuple<Channel, SlLeadFields, int, int, SlVerdict> rows[] = {
      {Channel::Downscan, {2064, 2, 1920, 7, 0}, 0, 1920, good},
      {Channel::Downscan, {2064, 2, 1920, 0, 0}, 1920, 1920, good},
      {Channel::Downscan, {2064, 2, 1920, 7, 0}, 1919, 1920, bad},
      {Channel::Downscan, {2064, 2, 0, 0, 0}, 1920, 1920, good},
      {Channel::Downscan, {2064, 2, 0, 7, 0}, 0, 0, bad},
      {Channel::Downscan, {144, 2, 0, 0, 0}, 0, 0, bad},
      {Channel::Downscan, {1, 2, -1, 7, 0}, 0, -1, bad},
      {Channel::Downscan, {0, 2, 1920, 7, 0}, 0, 1920, bad},
      {Channel::Downscan, {1, 5, -1, 7, 0}, 0, -1, other},
      {Channel::Scan3D, {400, 9, 1, 7, 0}, 0, 256, SlVerdict::StepOver},
      {Channel::Scan3D, {401, 9, 1, 7, 0}, 256, 257, good},
      {Channel::Scan3D, {144, 9, 1, 7, 0}, 0, 0, bad}};
  for (auto [channel, lead, known, samples, verdict] : rows) {
    lead.SampleCount = EffectiveSamples(lead, channel, format);
    EXPECT_EQ(lead.SampleCount, samples) << lead.FrameSize;
    EXPECT_EQ(SlCheck(lead, channel, static_cast<std::int16_t>(known)), verdict) << lead.FrameSize << samples;
  }
}

TEST(Layout, SourceEndsInOneZeroByte) {
  const Recording recording({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  SlSource source(recording.path, 1);
  EXPECT_EQ(source.Bytes(8, 3)[1], 10);
  EXPECT_EQ(source.Bytes(8, 3)[2], 0);
  EXPECT_EQ(FaultIn([&] { source.Bytes(8, 4); }), 9);
  source.BaseOffset = 5;
  EXPECT_EQ(source.Bytes(0, 2)[0], 6);
}

}  // namespace
}  // namespace sondrix
