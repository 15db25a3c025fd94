#pragma once

#include <cstddef>
#include <cstdint>

namespace sondrix {

// The echogram formats SL2 and SL3: a file header of 8 bytes, then frames back to back, all little-endian.
// This is the one table of offsets, for reading and for cropping.

inline constexpr std::int64_t FileHeaderLength = 8;

// Offsets of a frame's fields from the frame's start.
struct SlOffsets {
  std::uint8_t FrameSize, PrevSize, Channel, SampleCount, FrameIndex, Aux28, LowerLimit, Aux32, TimeBase;
  std::uint8_t WaterDepth, Speed, Aux68, MercX, MercY, Course, Aux7C, Heading, Flags, TimeOffset;
  std::uint8_t leadEnd;  // first byte behind the lead fields
  std::uint8_t bodyEnd;  // first byte behind the body fields
};

inline constexpr SlOffsets Sl2Offsets = {.FrameSize = 0x1C,
                                         .PrevSize = 0x1E,
                                         .Channel = 0x20,
                                         .SampleCount = 0x22,
                                         .FrameIndex = 0x24,
                                         .Aux28 = 0x28,
                                         .LowerLimit = 0x2C,
                                         .Aux32 = 0x32,
                                         .TimeBase = 0x3C,
                                         .WaterDepth = 0x40,
                                         .Speed = 0x64,
                                         .Aux68 = 0x68,
                                         .MercX = 0x6C,
                                         .MercY = 0x70,
                                         .Course = 0x78,
                                         .Aux7C = 0x7C,
                                         .Heading = 0x80,
                                         .Flags = 0x84,
                                         .TimeOffset = 0x8C,
                                         .leadEnd = 0x40,
                                         .bodyEnd = 0x90};

inline constexpr SlOffsets Sl3Offsets = {.FrameSize = 0x08,
                                         .PrevSize = 0x0A,
                                         .Channel = 0x0C,
                                         .SampleCount = 0x2C,
                                         .FrameIndex = 0x10,
                                         .Aux28 = 0x14,
                                         .LowerLimit = 0x18,
                                         .Aux32 = 0x34,
                                         .TimeBase = 0x28,
                                         .WaterDepth = 0x30,
                                         .Speed = 0x54,
                                         .Aux68 = 0x58,
                                         .MercX = 0x5C,
                                         .MercY = 0x60,
                                         .Course = 0x68,
                                         .Aux7C = 0x6C,
                                         .Heading = 0x70,
                                         .Flags = 0x74,
                                         .TimeOffset = 0x7C,
                                         .leadEnd = 0x2E,
                                         .bodyEnd = 0x80};

// Bits of Flags: what a frame holds newly, or validly.
inline constexpr std::uint16_t DepthFlag = 0x0008;
inline constexpr std::uint16_t PositionFlag = 0x0010;

// Where an SL3 frame tells the kind of its header.
inline constexpr std::size_t Sl3FrameVersion = 0x04;

// Where the six ChannelLinks of an SL2 frame begin.
inline constexpr std::size_t Sl2ChannelLinks = 0x04;

struct SlFormat {
  std::uint8_t FormatWord = 0;
  std::int32_t HeaderLength = 0;  // from the frame's start to its samples
  const SlOffsets* offsets = nullptr;
};

// Of a format word that is neither SL2's nor the older of SL3's, and so of every recording with 3D frames.
inline constexpr std::int32_t HeaderLength3D = 0xA8;

// Layout and header length of a format word. Fault 6 above 255.
SlFormat SlFormatOf(std::uint16_t formatWord);

}  // namespace sondrix
