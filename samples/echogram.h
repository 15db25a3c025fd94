#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <vector>

// A writer of SL2 and SL3 echograms that shares no line with the reader, so that both can be wrong only
// apart.

namespace sondrix {

// One frame as it is to be written. Empty optionals are filled by the writer; what is set goes into the field
// as it stands, however little it fits the bytes.
struct SampleFrame {
  std::uint16_t Channel = 2;
  float WaterDepth = 10.0F;   // feet
  float LowerLimit = 100.0F;  // feet
  std::int32_t MercX = 4'105'000;
  std::int32_t MercY = 7'533'000;
  float Speed = 3.0F;
  float Course = 1.0F;                    // radians clockwise from north
  float Heading = 1.0F;                   // radians clockwise from north
  std::int32_t TimeBase = 1'464'184'800;  // 2016-05-25 14:00:00
  std::uint32_t Aux28 = 0;
  std::uint8_t Aux32 = 0;
  std::uint32_t Aux44 = 0;
  std::uint32_t Aux68 = 0;
  std::uint32_t Aux7C = 0;
  std::vector<std::uint8_t> Samples = std::vector<std::uint8_t>(1920);  // the payload on channel 9

  std::optional<std::int32_t> FrameIndex;    // else counts the frames of its channel from 0
  std::optional<std::int32_t> TimeOffset;    // else 1000 ms for each frame of its channel before
  std::optional<std::uint32_t> FrameOffset;  // else the frame's position in the file, low 32 bits
  std::optional<std::int16_t> FrameSize;     // else header and samples
  std::optional<std::int16_t> PrevSize;      // else the bytes of the frame before, 0 for the first
  std::optional<std::int16_t> SampleCount;   // else Samples.size()
};

// A frame with an echo of 200 in the row of its depth and 0 in all others.
SampleFrame Frame(int channel, float depthFeet, std::int32_t mercX = 4'105'000,
                  std::int32_t mercY = 7'533'000, std::size_t sampleCount = 1920);

// One sounding of a 3D list, both in feet.
struct SampleSounding {
  float Depth = 0;
  float Dist = 0;
};

// The payload of a channel 9 frame. A list of n soundings is 8 (n + 1) bytes long: four spare bytes lie
// before the pairs and four behind them. No sounding gives a list of 0 bytes.
std::vector<std::uint8_t> Payload3D(std::span<const SampleSounding> left,
                                    std::span<const SampleSounding> right);

// A channel 9 frame with that payload.
SampleFrame Frame3D(std::span<const SampleSounding> left, std::span<const SampleSounding> right,
                    float depthFeet = 10.0F, std::int32_t mercX = 4'105'000, std::int32_t mercY = 7'533'000);

// Lays out an echogram frame by frame. The caller owns the bytes and may write and drop them between two
// calls, so a file of any length needs memory for one frame only.
class EchogramWriter {
 public:
  // formatWord: 2 is SL2, 1 SL3 with the short header (the fields behind it lie over the first samples), any
  // other SL3.
  explicit EchogramWriter(int formatWord);
  // Appends the 8 bytes that a file starts with.
  void Start(std::vector<std::uint8_t>& target);
  // Appends one frame. A field that doesn't lie wholly inside the frame's bytes is left out.
  void Add(const SampleFrame& frame, std::vector<std::uint8_t>& target);
  // Counts bytes of the last frame that the caller lays out behind it by itself.
  void Skip(std::size_t bytes) { position_ += bytes; }
  std::uint64_t Position() const { return position_; }  // bytes laid out so far

 private:
  int formatWord_;
  std::uint64_t position_ = 0;
  std::int16_t prevSize_ = 0;
  std::array<std::uint32_t, 10> links_{};   // the latest frame of each channel
  std::array<std::int32_t, 256> counts_{};  // frames so far, by the low byte of the channel
};

// A whole echogram.
std::vector<std::uint8_t> EchogramBytes(int formatWord, std::span<const SampleFrame> frames);
std::vector<std::uint8_t> EchogramBytes(int formatWord, std::initializer_list<SampleFrame> frames);

// Offsets that tests and damages patch, from a frame's start.
struct SampleLayout {
  std::size_t HeaderLength, FrameSize, Channel, SampleCount, FrameIndex, LowerLimit, TimeBase, WaterDepth,
      MercX, MercY, Course, Heading, TimeOffset;
};
const SampleLayout& LayoutOf(int formatWord);

// Where the frames of an undamaged echogram begin.
std::vector<std::size_t> FrameStarts(std::span<const std::uint8_t> echogram);

// Little-endian stores; what would run over the end of bytes is not stored.
void PutU16(std::span<std::uint8_t> bytes, std::size_t offset, std::uint16_t value);
void PutU32(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value);
void PutF32(std::span<std::uint8_t> bytes, std::size_t offset, float value);

// Replaces the file. False when it can't be written.
bool WriteBytes(const std::string& path, std::span<const std::uint8_t> bytes);

}  // namespace sondrix
