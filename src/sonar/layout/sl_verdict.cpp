#include "sonar/layout/sl_verdict.h"

#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"

namespace sondrix {
namespace {

constexpr std::int16_t KnownSamples3D = 256;

}  // namespace

std::int16_t EffectiveSamples(const SlLeadFields& lead, Channel selectedChannel, const SlFormat& format) {
  if (Is3D(selectedChannel) || (lead.FrameIndex == 0 && lead.SampleCount == 0)) {
    return static_cast<std::int16_t>(lead.FrameSize - format.HeaderLength);
  }
  return lead.SampleCount;
}

std::int16_t KnownSamplesOf(Channel selectedChannel, std::int16_t sampleCount) {
  return Is3D(selectedChannel) ? KnownSamples3D : sampleCount;
}

SlVerdict SlCheck(const SlLeadFields& lead, Channel selectedChannel, std::int16_t knownSamples) {
  if (lead.FrameSize <= 0 || lead.SampleCount == 0) return SlVerdict::Bad;
  if (lead.Channel != ChannelByte(selectedChannel)) return SlVerdict::OtherChannel;
  if (lead.SampleCount < 0) return SlVerdict::Bad;
  if (knownSamples == 0) knownSamples = KnownSamplesOf(selectedChannel, lead.SampleCount);
  if (!Is3D(selectedChannel)) {
    return lead.SampleCount == knownSamples ? SlVerdict::Good : SlVerdict::Bad;
  }
  return lead.SampleCount == knownSamples ? SlVerdict::StepOver : SlVerdict::Good;
}

}  // namespace sondrix
