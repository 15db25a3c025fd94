#include "sonar/layout/sl_verdict.h"

#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"

namespace sondrix {
namespace {

constexpr std::uint8_t First3DChannel = 7;  // channels from here on hold no echo samples
constexpr std::int16_t KnownSamples3D = 256;

}  // namespace

std::int16_t EffectiveSamples(const SlLeadFields& lead, std::uint8_t selectedChannel,
                              const SlFormat& format) {
  if (selectedChannel == 9 || (lead.FrameIndex == 0 && lead.SampleCount == 0)) {
    return static_cast<std::int16_t>(lead.FrameSize - format.HeaderLength);
  }
  return lead.SampleCount;
}

std::int16_t KnownSamplesOf(std::uint8_t selectedChannel, std::int16_t sampleCount) {
  return selectedChannel == 9 ? KnownSamples3D : sampleCount;
}

SlVerdict SlCheck(const SlLeadFields& lead, std::uint8_t selectedChannel, std::int16_t knownSamples) {
  if (lead.FrameSize <= 0 || lead.SampleCount == 0) return SlVerdict::Bad;
  if (lead.Channel != selectedChannel) return SlVerdict::OtherChannel;
  if (lead.SampleCount < 0) return SlVerdict::Bad;
  if (knownSamples == 0) knownSamples = KnownSamplesOf(selectedChannel, lead.SampleCount);
  if (lead.Channel < First3DChannel) {
    return lead.SampleCount == knownSamples ? SlVerdict::Good : SlVerdict::Bad;
  }
  return lead.SampleCount == knownSamples ? SlVerdict::StepOver : SlVerdict::Good;
}

}  // namespace sondrix
