#include "sonar/source_summary.h"

#include "core/fault.h"
#include "digest.h"
#include "samples/bulk.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "temporary_folder.h"

namespace sondrix {
namespace {

using namespace std::chrono_literals;

std::string SummaryOf(const TemporaryFolder& folder, const std::vector<std::uint8_t>& bytes) {
  std::ostringstream text;
  try {
    const SourceSummary all = LookAtEchogram(
        folder.Write("a.sl", {reinterpret_cast<const char*>(bytes.data()), bytes.size()}), 10s);
    text << all.bytes << (all.isWhole ? " bytes: " : " bytes and more: ") << all.frames;
    for (const ChannelSummary& one : all.channels)
      text << ", " << int{one.channel} << ": " << one.frames << '/' << one.withDepth << " of "
           << one.firstIndex << ".." << one.lastIndex;
    if (all.firstTime) text << ", " << *all.firstTime << ".." << *all.lastTime << " s";
    if (all.leastDepth) text << ", " << *all.leastDepth << ".." << *all.greatestDepth << " m";
  } catch (const Fault& fault) {
    text << fault.Number();
  }
  return text.str();
}

TEST(SourceSummary, TellsChannelsIndicesTimesAndDepths) {
  const TemporaryFolder folder;
  SampleFrame undated = Frame(2, 10), far = Frame(2, 20), blank = Frame(5, 0), early = Frame(2, 1500.5F),
              deep = Frame(7, 1500);
  undated.TimeBase = 0;
  undated.TimeOffset = 99'000;
  far.FrameIndex = 7456;
  far.TimeOffset = 65'999;
  blank.FrameIndex = 9;
  early.FrameIndex = early.TimeOffset = -1000;
  early.TimeBase = 1;  // the first that is told counts
  for (const int word : {2, 3}) {
    const auto bytes = EchogramBytes(word, {undated, far, blank, early, deep});
    EXPECT_EQ(SummaryOf(folder, bytes),
              std::to_string(bytes.size()) +
                  " bytes: 5, 2: 3/3 of -1000..7456, 5: 1/0 of 9..9, 7: 1/1 of 0..0, "
                  "3673346399..3673346465 s, 3.048..457.2 m");
  }
}

TEST(SourceSummary, DamagesAreSteppedOver) {
  const TemporaryFolder folder;
  EXPECT_EQ(SummaryOf(folder, EchogramBytes(2, {})), "8 bytes: 0");
  std::string all;
  for (const Damage& damage : Damages()) {
    const std::string text = SummaryOf(folder, damage.Apply(CleanEchogram(damage.FormatWord)));
    EXPECT_TRUE(text.find("bytes: ") != std::string::npos || text == "6") << text;  // its format word
    all.append(damage.Name).append(": " + text + "\n");
  }
  EXPECT_TRUE(HasDigest(all, 0x7F28FCB64DEF4084));
}

TEST(SourceSummary, ALongOneIsSampledFromStartToEnd) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("bulk.sl2");
  ASSERT_GT(WriteBulk(path, 30'000'000, false), 0);
  const SourceSummary all = LookAtEchogram(path, 60s);
  EXPECT_TRUE(all.isWhole);
  // Without time it looks at the start alone; with little at other places too, and never at one twice.
  const SourceSummary none = LookAtEchogram(path, 0ms);
  EXPECT_FALSE(none.isWhole);
  EXPECT_GT(none.frames, 0);
  EXPECT_LT(none.frames, all.frames);
  for (const auto time : {1ms, 2ms, 4ms}) {
    const SourceSummary some = LookAtEchogram(path, time);
    EXPECT_EQ(some.channels.size(), all.channels.size());
    EXPECT_LE(some.frames, all.frames);
  }
}

}  // namespace
}  // namespace sondrix
