#include "sonar/layout/sl_frame.h"

#include "sonar/layout/sl_format.h"
#include "sonar/layout/words.h"

namespace sondrix {

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
  frame.Flags = U16At(start + at.Flags);
  frame.TimeOffset = I32At(start + at.TimeOffset);
  return frame;
}

}  // namespace sondrix
