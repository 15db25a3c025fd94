#pragma once

#include <cstdint>
#include <span>

namespace sondrix {

struct SlFormat;

// The fields that are decoded for every frame of every channel.
struct SlLeadFields {
  std::int16_t FrameSize = 0;  // bytes to the next frame's start
  std::uint8_t Channel = 0;    // the low byte of the word
  std::int16_t SampleCount = 0;
  std::int32_t FrameIndex = 0;
  std::int32_t TimeBase = 0;  // seconds since 01/01/1970 00:00:00
};

// A frame that is processed: lead and body fields. The samples stay in the source's window.
struct SlFrame : SlLeadFields {
  float LowerLimit = 0;  // feet, depth of the last sample
  float WaterDepth = 0;  // feet
  float Speed = 0;
  std::int32_t MercX = 0, MercY = 0;  // metres on the Mercator sphere
  float Course = 0, Heading = 0;      // radians clockwise from north, 0: absent
  std::uint16_t Flags = 0;            // DepthFlag and others
  std::int32_t TimeOffset = 0;        // milliseconds from the start of the recording
};

// The lead fields of a frame that begins at the first of bytes, which are at least leadEnd.
SlLeadFields SlLead(std::span<const std::uint8_t> bytes, const SlFormat& format);

// All fields of that frame; bytes are at least bodyEnd, lead is what was decoded before.
SlFrame SlBody(std::span<const std::uint8_t> bytes, const SlFormat& format, const SlLeadFields& lead);

}  // namespace sondrix
