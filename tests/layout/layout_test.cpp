#include "core/fault.h"
#include "digest.h"
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
#include <tuple>

namespace sondrix {
namespace {

// Opens a source of these bytes.
SlSource Opened(const TemporaryFolder& folder, const std::vector<std::uint8_t>& bytes, std::size_t block) {
  const std::string path = folder.Write("a.sl", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  // cppcheck-suppress returnDanglingLifetime ; the source opens the path and keeps none of it
  return SlSource(path, block);
}

TEST(Layout, FieldsComeFromTheirPlaces) {
  std::ostringstream text;
  for (const int word : {2, 3, 255, 1}) {
    SampleFrame sample = Frame(0x0105, 12.5F, 4'100'001, -7'500'002, 300);
    sample.FrameIndex = 77;
    sample.TimeOffset = 4321;
    sample.LowerLimit = 50.5F;
    sample.Speed = 2.5F;
    sample.Course = 0.5F;
    sample.Heading = 0.75F;
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
    text << int{found.FormatWord} << ' ' << found.HeaderLength << ' ' << int{at.leadEnd} << ' '
         << int{at.bodyEnd} << ", " << all.FrameSize << " bytes, " << int{all.Channel} << ' '
         << all.SampleCount << ' ' << all.FrameIndex << ' ' << all.TimeBase << ' ' << all.WaterDepth << " of "
         << all.LowerLimit << " ft, " << all.Speed << " kn, " << all.MercX << ' ' << all.MercY << ", "
         << all.Course << ' ' << all.Heading << " rad, " << all.TimeOffset << " ms";
    for (const auto offset : {at.Aux28, at.Aux68, at.Aux7C})
      text << ' ' << std::hex << U32At(&frame[offset]) << std::dec;
    text << ' ' << int{frame[at.Aux32]} << '\n';
  }
  EXPECT_TRUE(
      text.str().starts_with("2 144 64 144, 444 bytes, 5 300 77 1464184800 12.5 of 50.5 ft, 2.5 kn, "));
  EXPECT_TRUE(HasDigest(text.str(), 0x62693637E0213A07));
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
  PutU32(bytes, 20'000 + MarkerOffset, 0x07800002);
  const TemporaryFolder folder;
  // Searched are 302 bytes of 604: of the last places in front of a leap one is looked at, one not.
  std::string all;
  for (const std::int64_t first : {19'780, 19'128, 29'100, 29'600, 20'032 - 300}) {
    SlSource source = Opened(folder, bytes, 8192);
    FrameSearch search{.At = first};
    SearchStep step;
    const int fault = FaultIn([&] {
      while (!step.found && !step.isPastEnd) {
        step = StepSearch(search, source, ResyncMarkerOf(Channel::Downscan));
        if (step.isReportDue) all += std::to_string(step.position) + " ";
      }
    });
    all += (fault        ? "fault " + std::to_string(fault)
            : step.found ? "found"
                         : "past the end") +
           " at " + std::to_string(search.At) + "\n";
  }
  EXPECT_EQ(all,
            "19880 19980 found at 20032\n19228 19328 19428 19832 19932 20032 found at 20032\n"
            "29200 29300 29400 29804 29904 fault 9 at 29998\n29700 29800 29900 past the end at 30204\n"
            "19832 19932 20032 found at 20032\n");
  // The array ends before the file.
  std::filesystem::resize_file(folder.Path("a.sl"), SlSource::ChunkLength + 10'000);
  SlSource source(folder.Path("a.sl"));
  FrameSearch search{.At = SlSource::ChunkLength - 3};
  EXPECT_FALSE(StepSearch(search, source, ResyncMarkerOf(Channel::Primary)).found);
  EXPECT_EQ(FaultIn([&] { StepSearch(search, source, ResyncMarkerOf(Channel::Primary)); }), 9);
}

TEST(Layout, AFrameIsJudgedByItsLead) {
  std::string all;
  for (const Channel selected : {Channel::Downscan, Channel::Scan3D})
    for (const int channel : {2, 5, 9})
      for (const int size : {0, 1, 144, 145, 168, 400, 401, 2064})
        for (const int samples : {-1, 0, 1, 1920})
          for (const int index : {0, 7})
            for (const int known : {0, 256, 1919, 1920}) {
              SlLeadFields lead{std::int16_t(size), std::uint8_t(channel), std::int16_t(samples), index, 0};
              lead.SampleCount = EffectiveSamples(lead, selected, SlFormatOf(2));
              const SlVerdict verdict = SlCheck(lead, selected, std::int16_t(known));
              all += std::to_string(lead.SampleCount) + ":" + std::to_string(int(verdict)) + " ";
            }
  EXPECT_TRUE(HasDigest(all, 0xCECEB8209A2FFE46));
  const SlVerdict judged = SlCheck({2064, 2, 1920, 7, 0}, Channel::Downscan, 1919);
  EXPECT_EQ(judged, SlVerdict::Bad) << "another number of samples than the frame before";
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
  for (std::int64_t at = 0, step = 0; step < 3000; ++step) {
    const std::int64_t rest = 299'996 - at;
    const auto count =
        std::min<std::size_t>(chance.Below(step % 9 == 0 ? 60'000 : 3000), static_cast<std::size_t>(rest));
    const auto read = source.Bytes(at, count);
    ASSERT_TRUE(std::equal(read.begin(), read.end(), bytes.begin() + at + 5)) << at;
    source.Require(at, rest);
    EXPECT_EQ(FaultIn([&] { source.Require(at, rest + 1); }), 9);
    at = static_cast<std::int64_t>(count) == rest ? 0
                                                  : std::min<std::int64_t>(at + chance.Below(2000), 299'996);
  }
  EXPECT_EQ(FaultIn([&] { source.Bytes(299'994, 3); }), 9);
  EXPECT_EQ(FaultIn([&] { source.Bytes(-6, 3); }), 9);
  EXPECT_TRUE(source.Has(299'993, 2) && !source.Has(299'994, 2) && !source.HasChanged());
}

}  // namespace
}  // namespace sondrix
