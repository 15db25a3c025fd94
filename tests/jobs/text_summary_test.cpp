#include "jobs/text_summary.h"

#include "core/files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace sondrix {
namespace {

using namespace std::chrono_literals;

TEST(TextSummary, TellsKindLinesChannelsAndDepths) {
  const struct {
    std::string name, text;
    TextKind kind;
    std::int64_t lines, soundings;
    std::size_t channels;
    double least, greatest;
  } cases[] = {
      {"a.csv",
       "Channel,b\r\nPrimary,1,1,1,1,10,1\r\nDownscan,1,1,1,1,20,1\r\nPrimary,1,1,1,1,0.000000,1\r\n",
       TextKind::Export, 4, 3, 2, 3.048, 6.096},
      {"b.txt", "x;y;z\n1;2;3,5\n1;2;4.5", TextKind::ThreeColumns, 3, 2, 0, 3.5, 4.5},
      {"c.log", "$GPGGA,1\r\n$SDDBT,10.0,f\r\n$SDDBT,,f\r\n", TextKind::Log, 3, 2, 0, 3.048, 3.048},
      {"d.mp", "[POLYLINE]\r\nLABEL=2.5\r\nData0=(1,2)\r\n", TextKind::Map, 3, 1, 0, 2.5, 2.5},
  };
  for (const auto& row : cases) {
    const std::string path = testing::TempDir() + "sondrix_summary_" + row.name;
    OutputFile(path).Write(row.text);
    const TextSummary summary = LookAtText(path, 10s);
    EXPECT_EQ(summary.kind, row.kind) << row.name;
    EXPECT_TRUE(summary.isWhole);
    EXPECT_EQ(summary.lines, row.lines) << row.name;
    EXPECT_EQ(summary.soundings, row.soundings) << row.name;
    EXPECT_EQ(summary.channels.size(), row.channels) << row.name;
    EXPECT_NEAR(summary.leastDepth.value_or(0), row.least, 1e-4) << row.name;
    EXPECT_NEAR(summary.greatestDepth.value_or(0), row.greatest, 1e-4) << row.name;
    std::filesystem::remove(path);
  }
}

TEST(TextSummary, TheLinesOfALongOneAreEstimated) {
  const std::string path = testing::TempDir() + "sondrix_summary_long.csv";
  std::string text = "Channel,b\r\n";
  for (int i = 0; i < 200'000; ++i) text += "Primary,1,1,1,1,10,1\r\n";
  OutputFile(path).Write(text);
  EXPECT_EQ(LookAtText(path, 60s).lines, 200'001);
  const TextSummary summary = LookAtText(path, 0ms);
  EXPECT_FALSE(summary.isWhole);
  EXPECT_NEAR(static_cast<double>(summary.lines), 200'000, 2000);
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace sondrix
