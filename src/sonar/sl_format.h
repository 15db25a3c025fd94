#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace sondrix {

// The echogram formats SL2 and SL3: a file header of 8 bytes, then frames back to back, all little-endian.
// This is the one table of offsets, for reading and for cropping.

inline constexpr std::int64_t FileHeaderLength = 8;

// Offsets of a frame's fields from the frame's start.
struct SlOffsets {
  std::uint8_t FrameSize, PrevSize, Channel, SampleCount, FrameIndex, Aux28, LowerLimit, Aux32, TimeBase;
  std::uint8_t WaterDepth, Speed, Aux68, MercX, MercY, Course, Aux7C, Heading, TimeOffset;
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
                                         .TimeOffset = 0x7C,
                                         .leadEnd = 0x2E,
                                         .bodyEnd = 0x80};

// Where the six ChannelLinks of an SL2 frame begin.
inline constexpr std::size_t Sl2ChannelLinks = 0x04;

struct SlFormat {
  std::uint8_t FormatWord = 0;
  std::int32_t HeaderLength = 0;  // from the frame's start to its samples
  const SlOffsets* offsets = nullptr;
};

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
  std::int32_t TimeOffset = 0;        // milliseconds from the start of the recording
};

// Payload of a 3D frame: where the lengths of its two lists stand.
struct SlLists3D {
  std::int16_t LeftBytes = 0, RightBytes = 0;
};
inline constexpr std::int32_t HeaderLength3D = 0xA8;
inline constexpr std::int32_t ListsEnd3D = HeaderLength3D + 0x0E;  // first byte behind the lengths
inline constexpr float LowerLimit3D = 210.0F;                      // feet, whatever a 3D frame says

enum class SlVerdict { Bad, OtherChannel, StepOver, Good };

// Layout and header length of a format word. Fault 6 above 255.
SlFormat SlFormatOf(std::uint16_t formatWord);

// The lead fields of a frame that begins at the first of bytes, which are at least leadEnd.
SlLeadFields SlLead(std::span<const std::uint8_t> bytes, const SlFormat& format);

// All fields of that frame; bytes are at least bodyEnd, lead is what was decoded before.
SlFrame SlBody(std::span<const std::uint8_t> bytes, const SlFormat& format, const SlLeadFields& lead);

// The lengths of a 3D frame's two lists; bytes are at least ListsEnd3D.
SlLists3D SlSamples3D(std::span<const std::uint8_t> bytes);

// The sample count by which a frame is judged: 3D frames and frames without index and count take it from
// their size.
std::int16_t EffectiveSamples(const SlLeadFields& lead, std::uint8_t selectedChannel, const SlFormat& format);

// The sample count that the frames of a run have, from its first frame of the selected channel.
std::int16_t KnownSamplesOf(std::uint8_t selectedChannel, std::int16_t sampleCount);

// Judges a frame by its lead fields. knownSamples is 0 until a frame of the selected channel was seen.
SlVerdict SlCheck(const SlLeadFields& lead, std::uint8_t selectedChannel, std::int16_t knownSamples);

// The word that stands at offset 0x20 of an SL2 frame of 1920 samples of the channel, by which the reader
// finds its way back.
std::uint32_t ResyncMarkerOf(int channel);
inline constexpr std::int64_t MarkerOffset = 0x20;

// Little-endian words of any alignment.
std::uint16_t U16At(const std::uint8_t* bytes);
std::uint32_t U32At(const std::uint8_t* bytes);
float FloatAt(const std::uint8_t* bytes);

}  // namespace sondrix
