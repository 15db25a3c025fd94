#include "core/fault.h"
#include "fault_in.h"
#include "samples/echogram.h"
#include "samples/xorshift.h"
#include "sonar/layout/find_frame.h"
#include "sonar/layout/lists_3d.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"
#include "sonar/layout/sl_verdict.h"
#include "sonar/layout/words.h"
#include "temporary_folder.h"

#include <algorithm>
#include <sstream>
#include <tuple>
#include <vector>

namespace sondrix {
namespace {

// Opens a source of these bytes.
SlSource Opened(const TemporaryFolder& folder, const std::vector<std::uint8_t>& bytes, std::size_t block) {
  return SlSource(folder.Write("a.sl", {reinterpret_cast<const char*>(bytes.data()), bytes.size()}), block);
}

TEST(Layout, FieldsComeFromTheirPlaces) {
  const std::string body =
      ", 12.5 of 50.5 ft, 2.5 kn, 4100001 -7500002, 0.5 0.75 rad, 4321 ms, 11223344 77 1020304 a0b0c0d";
  // The format word; its header, and where lead and body end; what is read.
  const std::tuple<int, const char*, std::string> rows[] = {
      {2, "2 144 64 144, 444", body}, {1, "1 94 46 128, 394", ""}, {255, "255 168 46 128, 468", body}};
  for (const auto& [word, format, rest] : rows) {
    SampleFrame sample = Frame(0x0105, 12.5F, 4'100'001, -7'500'002, 300);  // the low byte counts
    sample.LowerLimit = 50.5F;
    sample.Speed = 2.5F;
    sample.Course = 0.5F;
    sample.Heading = 0.75F;
    sample.FrameIndex = 77;
    sample.TimeOffset = 4321;
    sample.Aux28 = 0x11223344;
    sample.Aux32 = 0x77;
    sample.Aux68 = 0x01020304;
    sample.Aux7C = 0x0A0B0C0D;
    const std::vector<std::uint8_t> bytes = EchogramBytes(word, {sample});
    const auto frame = std::span(bytes).subspan(FileHeaderLength);
    const SlFormat found = SlFormatOf(static_cast<std::uint16_t>(word));
    const SlOffsets& at = *found.offsets;
    const SlLeadFields lead = SlLead(frame, found);
    const SlFrame all = SlBody(frame, found, lead);
    std::ostringstream text;
    text << int{found.FormatWord} << ' ' << found.HeaderLength << ' ' << int{at.leadEnd} << ' '
         << int{at.bodyEnd} << ", " << all.FrameSize << " bytes, " << int{all.Channel} << ' '
         << all.SampleCount << ' ' << all.FrameIndex << ' ' << all.TimeBase;
    if (word != 1)  // its samples lie over the body
      text << ", " << all.WaterDepth << " of " << all.LowerLimit << " ft, " << all.Speed << " kn, "
           << all.MercX << ' ' << all.MercY << ", " << all.Course << ' ' << all.Heading << " rad, "
           << all.TimeOffset << " ms, " << std::hex << U32At(&frame[at.Aux28]) << ' ' << int{frame[at.Aux32]}
           << ' ' << U32At(&frame[at.Aux68]) << ' ' << U32At(&frame[at.Aux7C]);
    EXPECT_EQ(text.str(), format + std::string(" bytes, 5 300 77 1464184800") + rest);
  }
  EXPECT_EQ(FaultIn([] { SlFormatOf(0x100); }), 6);
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
  const TemporaryFolder folder;
  // Searched are 302 bytes of 604: of the last places in front of a leap one is looked at, one not.
  const std::tuple<std::int64_t, const char*, std::vector<std::int64_t>> rows[] = {
      {frame - 220, "found", {frame - 120, frame - 20}},
      {frame + 32 - 604 - 300, "found", {19'228, 19'328, 19'428, 19'832, 19'932, 20'032}},
      {29'100, "fault 9", {29'200, 29'300, 29'400, 29'804, 29'904}},
      {29'600, "past the end", {29'700, 29'800, 29'900}},
  };
  for (const auto& [first, end, positions] : rows) {
    SlSource source = Opened(folder, bytes, 8192);
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
    SlSource source = Opened(folder, bytes, 8192);
    FrameSearch search{.At = frame + MarkerOffset - way};
    for (int i = 0; i < way / 2; ++i) StepSearch(search, source, 0x0780FFFF);
    EXPECT_EQ(StepSearch(search, source, ResyncMarkerOf(Channel::Downscan)).found, way == 300);
  }
  // The array ends before the file.
  std::filesystem::resize_file(folder.Path("a.sl"), SlSource::ChunkLength + 10'000);
  SlSource source(folder.Path("a.sl"));
  for (const int before : {3, 2}) {
    FrameSearch search{.At = SlSource::ChunkLength - before};
    EXPECT_EQ(FaultIn([&] { StepSearch(search, source, ResyncMarkerOf(Channel::Primary)); }),
              before == 3 ? 0 : 9);
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
  const TemporaryFolder folder;
  XorShift chance(3);
  std::vector<std::uint8_t> bytes(300'000);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(chance.Next());
  SlSource source = Opened(folder, bytes, 9000);
  EXPECT_EQ(source.FilePosition(), 8);
  bytes.push_back(0);
  source.BaseOffset = 5;
  // Forwards by steps of all lengths and back to the start.
  for (std::size_t at = 0, step = 0; step < 3000; ++step) {
    const std::size_t count = chance.Below(step % 9 == 0 ? 60'000 : 3000);
    const std::size_t most = std::min(count, bytes.size() - 5 - at);
    ASSERT_TRUE(std::ranges::equal(source.Bytes(static_cast<std::int64_t>(at), most),
                                   std::span(bytes).subspan(at + 5, most)))
        << at;
    EXPECT_EQ(FaultIn([&] {
                source.Require(static_cast<std::int64_t>(at),
                               static_cast<std::int64_t>(bytes.size() - at - 4));
              }),
              9);
    at = at + most >= bytes.size() - 5 ? 0 : at + chance.Below(2000);
    at = std::min(at, bytes.size() - 5);
  }
  EXPECT_EQ(FaultIn([&] { source.Bytes(299'994, 3); }), 9);
  EXPECT_EQ(FaultIn([&] { source.Bytes(-6, 3); }), 9);
  EXPECT_TRUE(source.Has(299'993, 2) && !source.Has(299'994, 2) && !source.HasChanged());
}

}  // namespace
}  // namespace sondrix
