#include "jobs/text_summary.h"

#include "core/number_text.h"
#include "core/rounding.h"
#include "temporary_folder.h"

namespace sondrix {
namespace {

using namespace std::chrono_literals;

// Whether it was read whole, its kind, lines and soundings, the rows and depths of each channel, and the
// range of depths.
std::string Told(const TextSummary& summary) {
  std::string text = summary.isWhole ? "whole" : "sample";
  for (const auto number : {static_cast<std::int64_t>(summary.kind), summary.lines, summary.soundings})
    text += " " + std::to_string(number);
  for (const auto& [channel, rows, withDepth] : summary.channels)
    text += " " + std::to_string(channel) + ":" + std::to_string(rows) + "/" + std::to_string(withDepth);
  for (const auto depth : {summary.leastDepth, summary.greatestDepth})
    text += depth ? " " + LocText(RoundTo(*depth, 3)) : " none";
  return text;
}

TEST(TextSummary, TellsKindLinesChannelsAndDepths) {
  const std::string head = "Channel,b\r\n", row = ",1,1,1,1,";
  const std::tuple<const char*, std::string, const char*> rows[] = {
      {"a.csv",
       head + "Primary" + row + "10,1\r\nDownscan" + row + "20,1\r\nPrimary" + row + "0.000000,1\r\n",
       "whole 0 4 3 0:2/1 2:1/1 3.048 6.096"},
      {"a.csv", head + "Primary" + row + "1e400\nPrimary,1,1,1,1\n3D" + row + "5\nx;y",
       "whole 0 5 1 0:1/1 none none"},
      {"b.txt", "x;y;z\n1;2;3,5\n1;2;4.5", "whole 1 3 2 3.5 4.5"},
      {"c.log", "$GPGGA,1\r\n$SDDBT,10.0,f\r\n\r\n$SDDBT,,f\r\n$SDDBT,-4,f\r\n", "whole 2 5 3 3.048 3.048"},
      {"d.mp", "[POLYLINE]\r\nLABEL=2.5\r\nlabel=\r\nLabel=x\r\nData0=(1,2)\r\n", "whole 3 5 1 2.5 2.5"},
      {"none.csv", "", "whole 0 0 0 none none"}};
  for (const auto& [name, text, told] : rows) {
    const TemporaryFolder folder;
    EXPECT_EQ(Told(LookAtText(folder.Write(name, text), 10s)), told) << text;
  }
}

TEST(TextSummary, TheLinesOfALongOneAreEstimated) {
  std::string text = "Channel,b\r\n";
  for (int i = 0; i < 200'000; ++i) text += "Primary,1,1,1,1,10,1\r\n";
  const TemporaryFolder folder;
  const std::string path = folder.Write("long.csv", text);
  EXPECT_EQ(Told(LookAtText(path, 60s)), "whole 0 200001 200000 0:200000/200000 3.048 3.048");
  const TextSummary summary = LookAtText(path, 0ms);
  EXPECT_FALSE(summary.isWhole);
  EXPECT_NEAR(static_cast<double>(summary.lines), 200'000, 200);
}

}  // namespace
}  // namespace sondrix
