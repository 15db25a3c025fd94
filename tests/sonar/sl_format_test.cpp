#include "sonar/sl_format.h"

#include "core/fault.h"
#include "samples/echogram.h"

#include <array>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(SlFormat, FormatWordDecidesOnTheHeader) {
  for (const auto& [word, length] : {std::pair(2, 0x90), {1, 0x5E}, {3, 0xA8}, {0, 0xA8}, {255, 0xA8}})
    EXPECT_EQ(SlFormatOf(static_cast<std::uint16_t>(word)).HeaderLength, length) << word;
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
    EXPECT_EQ((std::array{int{lead.Channel}, lead.FrameSize - format.HeaderLength, int{lead.SampleCount},
                          lead.FrameIndex, lead.TimeBase}),
              (std::array{2, 1920, 1920, 77, written.TimeBase}));  // the channel is the low byte
    if (word == 1) continue;                                       // its body fields lie over the samples
    const SlFrame frame = SlBody(frameBytes, format, lead);
    EXPECT_EQ((std::array{frame.WaterDepth, frame.LowerLimit, frame.Speed, frame.Course, frame.Heading}),
              (std::array{12.5F, 60.0F, 4.5F, 1.25F, 2.5F}));
    EXPECT_EQ((std::array{frame.MercX, frame.MercY, frame.TimeOffset}), (std::array{-700, 800, 123456}));
  }
}

TEST(SlFormat, Verdicts) {
  using enum SlVerdict;
  // The selected channel, the known samples; the frame's size, channel, samples and index.
  const std::tuple<int, int, int, int, int, int, SlVerdict> rows[] = {
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
      {2, 1920, 2064, 2, -1, 5, Bad}};
  const SlFormat format = SlFormatOf(2);
  for (const auto& [selectedChannel, known, size, channel, samples, index, verdict] : rows) {
    SlLeadFields lead{std::int16_t(size), std::uint8_t(channel), std::int16_t(samples), index, 0};
    const auto selected = static_cast<std::uint8_t>(selectedChannel);
    lead.SampleCount = EffectiveSamples(lead, selected, format);
    EXPECT_EQ(SlCheck(lead, selected, std::int16_t(known)), verdict)
        << size << " " << channel << " " << samples;
  }
}

}  // namespace
}  // namespace sondrix
