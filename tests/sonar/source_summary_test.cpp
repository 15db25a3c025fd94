#include "sonar/source_summary.h"

#include "core/fault.h"
#include "core/files.h"
#include "samples/bulk.h"
#include "samples/damage.h"
#include "samples/echogram.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

using namespace std::chrono_literals;

class SourceSummaryTest : public testing::Test {
 protected:
  SourceSummaryTest() { std::filesystem::create_directories(folder); }
  ~SourceSummaryTest() override { std::filesystem::remove_all(folder); }
  std::string Write(const std::string& name, std::span<const std::uint8_t> bytes) const {
    OutputFile((folder / name).string()).Write(bytes);
    return (folder / name).string();
  }

  std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) /
      (std::string("sondrix_") + testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(SourceSummaryTest, TellsChannelsIndicesTimesAndDepths) {
  SampleFrame far = Frame(2, 20), blank = Frame(5, 0);
  far.FrameIndex = 7456;
  far.TimeOffset = 65'000;
  blank.FrameIndex = 9;
  for (const int formatWord : {2, 3}) {
    const SourceSummary summary = LookAtEchogram(
        Write("a.sl", EchogramBytes(formatWord, {Frame(2, 10), far, blank, Frame(7, 5)})), 10s);
    EXPECT_TRUE(summary.isWhole);
    EXPECT_EQ(summary.frames, 4);
    ASSERT_EQ(summary.channels.size(), 3U);
    EXPECT_EQ(summary.channels[0].channel, 2);
    EXPECT_EQ(summary.channels[0].withDepth, 2);
    EXPECT_EQ(summary.channels[0].firstIndex, 0);
    EXPECT_EQ(summary.channels[0].lastIndex, 7456);
    EXPECT_EQ(summary.channels[1].withDepth, 0);
    EXPECT_EQ(summary.channels[1].firstIndex, 9);
    EXPECT_EQ(*summary.lastTime - *summary.firstTime, 65);
    EXPECT_FLOAT_EQ(*summary.leastDepth, 1.524F);
    EXPECT_FLOAT_EQ(*summary.greatestDepth, 6.096F);
  }
}

TEST_F(SourceSummaryTest, DamagesAreSteppedOver) {
  for (const Damage& damage : Damages()) {
    const auto bytes = damage.Apply(CleanEchogram(damage.FormatWord));
    const std::string path = Write("damaged.sl", bytes);
    try {
      const SourceSummary summary = LookAtEchogram(path, 10s);
      EXPECT_TRUE(summary.isWhole) << damage.Name;
      EXPECT_LE(summary.frames, 82) << damage.Name;
      EXPECT_GT(summary.frames, damage.Name == "noise" ? 70 : -1);
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.Number(), 6) << damage.Name;  // its format word
    }
  }
}

TEST_F(SourceSummaryTest, ALongOneIsSampledFromStartToEnd) {
  const std::string path = (folder / "bulk.sl2").string();
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
