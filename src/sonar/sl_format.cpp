#include "sonar/sl_format.h"

#include "core/fault.h"

#include <bit>
#include <cstring>

namespace sondrix {
namespace {

std::int16_t I16At(const std::uint8_t* bytes) { return static_cast<std::int16_t>(U16At(bytes)); }
std::int32_t I32At(const std::uint8_t* bytes) { return static_cast<std::int32_t>(U32At(bytes)); }

constexpr std::uint8_t First3DChannel = 7;  // channels from here on hold no echo samples
constexpr std::int16_t KnownSamples3D = 256;

}  // namespace

std::uint16_t U16At(const std::uint8_t* bytes) {
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t U32At(const std::uint8_t* bytes) {
  std::uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  if constexpr (std::endian::native == std::endian::big) {
    word = (word >> 24) | ((word >> 8) & 0xFF00U) | ((word << 8) & 0xFF0000U) | (word << 24);
  }
  return word;
}

float FloatAt(const std::uint8_t* bytes) { return std::bit_cast<float>(U32At(bytes)); }

SlFormat SlFormatOf(std::uint16_t formatWord) {
  if (formatWord > 0xFF) throw Fault(FaultNumber::Overflow);
  const auto word = static_cast<std::uint8_t>(formatWord);
  switch (word) {
    case 2:
      return {word, 0x90, &Sl2Offsets};
    case 1:
      return {word, 0x5E, &Sl3Offsets};
    default:
      return {word, HeaderLength3D, &Sl3Offsets};
  }
}

SlLeadFields SlLead(std::span<const std::uint8_t> bytes, const SlFormat& format) {
  const std::uint8_t* frame = bytes.data();
  const SlOffsets& at = *format.offsets;
  SlLeadFields lead;
  lead.FrameSize = I16At(frame + at.FrameSize);
  lead.Channel = frame[at.Channel];
  lead.SampleCount = I16At(frame + at.SampleCount);
  lead.FrameIndex = I32At(frame + at.FrameIndex);
  lead.TimeBase = I32At(frame + at.TimeBase);
  return lead;
}

SlFrame SlBody(std::span<const std::uint8_t> bytes, const SlFormat& format, const SlLeadFields& lead) {
  const SlOffsets& at = *format.offsets;
  const std::uint8_t* start = bytes.data();
  SlFrame frame;
  static_cast<SlLeadFields&>(frame) = lead;
  frame.LowerLimit = FloatAt(start + at.LowerLimit);
  frame.WaterDepth = FloatAt(start + at.WaterDepth);
  frame.Speed = FloatAt(start + at.Speed);
  frame.MercX = I32At(start + at.MercX);
  frame.MercY = I32At(start + at.MercY);
  frame.Course = FloatAt(start + at.Course);
  frame.Heading = FloatAt(start + at.Heading);
  frame.TimeOffset = I32At(start + at.TimeOffset);
  return frame;
}

SlLists3D SlSamples3D(std::span<const std::uint8_t> bytes) {
  return {I16At(bytes.data() + HeaderLength3D + 4), I16At(bytes.data() + HeaderLength3D + 8)};
}

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

std::uint32_t ResyncMarkerOf(int channel) { return channel == 0 ? 0x07800000U : 0x07800002U; }

}  // namespace sondrix
