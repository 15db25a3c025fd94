#include "sonar/sl_format.h"

#include "core/fault.h"
#include "samples/echogram.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(SlFormat, FormatWordDecidesOnTheHeader) {
  const std::vector<std::pair<int, int>> rows = {{2, 0x90}, {1, 0x5E}, {3, 0xA8}, {0, 0xA8}, {255, 0xA8}};
  for (const auto& [word, headerLength] : rows) {
    EXPECT_EQ(SlFormatOf(static_cast<std::uint16_t>(word)).HeaderLength, headerLength) << word;
  }
  EXPECT_THROW(SlFormatOf(256), Fault);
}

TEST(SlFormat, FieldsComeFromTheirPlaceInEachLayout) {
  for (const int word : {1, 2, 3}) {
    SampleFrame written = Frame(0x0102, 12.5F, -700, 800);
    written.Speed = 4.5F;
    written.Course = 1.25F;
    written.Heading = 2.5F;
    written.LowerLimit = 60;
    written.FrameIndex = 77;
    written.TimeOffset = 123456;
    const auto bytes = EchogramBytes(word, {written});
    const SlFormat format = SlFormatOf(static_cast<std::uint16_t>(word));
    const auto frameBytes = std::span(bytes).subspan(8);
    const SlLeadFields lead = SlLead(frameBytes, format);
    EXPECT_EQ(lead.Channel, 2) << "the low byte counts";
    EXPECT_EQ(lead.FrameSize, 1920 + format.HeaderLength);
    EXPECT_EQ(lead.SampleCount, 1920);
    EXPECT_EQ(lead.FrameIndex, 77);
    EXPECT_EQ(lead.TimeBase, written.TimeBase);
    if (word == 1) continue;  // its body fields lie over the samples
    const SlFrame frame = SlBody(frameBytes, format, lead);
    EXPECT_EQ(frame.WaterDepth, 12.5F);
    EXPECT_EQ(frame.LowerLimit, 60.0F);
    EXPECT_EQ(frame.Speed, 4.5F);
    EXPECT_EQ(frame.MercX, -700);
    EXPECT_EQ(frame.MercY, 800);
    EXPECT_EQ(frame.Course, 1.25F);
    EXPECT_EQ(frame.Heading, 2.5F);
    EXPECT_EQ(frame.TimeOffset, 123456);
  }
}

TEST(SlFormat, Verdicts) {
  struct Row {
    int selected, known, size, channel, samples, index;
    SlVerdict verdict;
  };
  using enum SlVerdict;
  const std::vector<Row> rows = {
      {2, 1920, 2064, 2, 1920, 5, Good},
      {2, 0, 2064, 2, 1920, 5, Good},
      {2, 1920, 2544, 2, 2400, 5, Bad},
      {2, 1920, 2544, 0, 2400, 5, OtherChannel},
      {2, 1920, 2064, 2, 0, 5, Bad},
      {2, 1920, 2064, 2, 0, 0, Good},
      {2, 1920, 2064, 0, 0, 5, Bad},
      {2, 1920, 0, 0, 1920, 5, Bad},
      {2, 1920, -8, 2, 1920, 5, Bad},
      {9, 256, 0x90 + 800, 9, 1, 5, Good},
      {9, 0, 0x90 + 256, 9, 1, 5, StepOver},
      {9, 256, 0x90 + 256, 9, 800, 5, StepOver},
      {9, 256, 0x90 + 100, 2, 0, 5, OtherChannel},
      {5, 1920, 2064, 2, -1, 5, OtherChannel},
      {9, 256, 100, 2, 0, 5, OtherChannel},
      {2, 1920, 2064, 2, -1, 5, Bad},
  };
  const SlFormat format = SlFormatOf(2);
  for (const Row& row : rows) {
    SlLeadFields lead;
    lead.FrameSize = static_cast<std::int16_t>(row.size);
    lead.Channel = static_cast<std::uint8_t>(row.channel);
    lead.SampleCount = static_cast<std::int16_t>(row.samples);
    lead.FrameIndex = row.index;
    const auto selected = static_cast<std::uint8_t>(row.selected);
    lead.SampleCount = EffectiveSamples(lead, selected, format);
    EXPECT_EQ(SlCheck(lead, selected, static_cast<std::int16_t>(row.known)), row.verdict)
        << "row " << &row - rows.data();
  }
}

}  // namespace
}  // namespace sondrix
