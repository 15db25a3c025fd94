#include "samples/echogram.h"

#include "samples/open_file.h"

#include <algorithm>
#include <bit>
#include <cstdio>

namespace sondrix {

namespace {

constexpr std::uint32_t MinusOne = 0xBF800000;  // -1.0 as a float, what sounders write for "no value"

// Offsets of what only the writer needs.
struct WriterLayout {
  std::size_t FrameOffset, PrevSize, Links, LinkCount, Aux28, Aux32, Aux44, Speed, Aux68, Aux7C;
};

struct Filler {
  std::size_t Offset;
  std::uint32_t Value;
};

constexpr SampleLayout Sl2{0x90, 0x1C, 0x20, 0x22, 0x24, 0x2C, 0x3C, 0x40, 0x6C, 0x70, 0x78, 0x80, 0x8C};
constexpr SampleLayout Sl3{0xA8, 0x08, 0x0C, 0x2C, 0x10, 0x18, 0x28, 0x30, 0x5C, 0x60, 0x68, 0x70, 0x7C};
constexpr SampleLayout Sl3Short{0x5E, 0x08, 0x0C, 0x2C, 0x10, 0x18, 0x28, 0x30, 0x5C, 0x60, 0x68, 0x70, 0x7C};

constexpr WriterLayout Sl2Writer{0x00, 0x1E, 0x04, 6, 0x28, 0x32, 0x44, 0x64, 0x68, 0x7C};
constexpr WriterLayout Sl3Writer{0x00, 0x0A, 0x80, 10, 0x14, 0x34, 0x40, 0x54, 0x58, 0x6C};
constexpr WriterLayout Sl3ShortWriter{0x00, 0x0A, 0x80, 0, 0x14, 0x34, 0x40, 0x54, 0x58, 0x6C};

constexpr Filler Sl2Fillers[] = {{0x50, MinusOne}, {0x54, MinusOne},   {0x58, MinusOne},
                                 {0x5C, MinusOne}, {0x84, 0x0000000C}, {0x88, 0x01140101}};
constexpr Filler Sl3Fillers[] = {{0x04, 10},       {0x44, MinusOne},   {0x48, MinusOne},
                                 {0x4C, MinusOne}, {0x74, 0x000002BE}, {0x78, 0x00040003}};

const WriterLayout& WriterLayoutOf(int formatWord) {
  return formatWord == 2 ? Sl2Writer : formatWord == 1 ? Sl3ShortWriter : Sl3Writer;
}

std::uint32_t Bits(std::int32_t value) { return std::bit_cast<std::uint32_t>(value); }
std::uint16_t Bits(std::int16_t value) { return std::bit_cast<std::uint16_t>(value); }

void PutList(std::span<std::uint8_t> list, std::span<const SampleSounding> soundings) {
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    PutF32(list, 8 * i + 4, soundings[i].Depth);
    PutF32(list, 8 * i + 8, soundings[i].Dist);
  }
}

}  // namespace

void PutU16(std::span<std::uint8_t> bytes, std::size_t offset, std::uint16_t value) {
  if (offset + 2 > bytes.size()) return;
  bytes[offset] = static_cast<std::uint8_t>(value);
  bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

void PutU32(std::span<std::uint8_t> bytes, std::size_t offset, std::uint32_t value) {
  if (offset + 4 > bytes.size()) return;
  for (std::size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

void PutF32(std::span<std::uint8_t> bytes, std::size_t offset, float value) {
  PutU32(bytes, offset, std::bit_cast<std::uint32_t>(value));
}

const SampleLayout& LayoutOf(int formatWord) {
  return formatWord == 2 ? Sl2 : formatWord == 1 ? Sl3Short : Sl3;
}

SampleFrame Frame(int channel, float depthFeet, std::int32_t mercX, std::int32_t mercY,
                  std::size_t sampleCount) {
  SampleFrame frame;
  frame.Channel = static_cast<std::uint16_t>(channel);
  frame.WaterDepth = depthFeet;
  frame.MercX = mercX;
  frame.MercY = mercY;
  frame.Samples.assign(sampleCount, 0);
  const float row = depthFeet / frame.LowerLimit * static_cast<float>(sampleCount);
  if (row >= 0 && row < static_cast<float>(sampleCount)) frame.Samples[static_cast<std::size_t>(row)] = 200;
  return frame;
}

std::vector<std::uint8_t> Payload3D(std::span<const SampleSounding> left,
                                    std::span<const SampleSounding> right) {
  constexpr std::size_t head = 0x4C;
  const std::size_t leftBytes = left.empty() ? 0 : 8 * (left.size() + 1);
  const std::size_t rightBytes = right.empty() ? 0 : 8 * (right.size() + 1);
  std::vector<std::uint8_t> payload(head + leftBytes + rightBytes);
  PutU16(payload, 0x04, static_cast<std::uint16_t>(leftBytes));
  PutU16(payload, 0x08, static_cast<std::uint16_t>(rightBytes));
  PutList(std::span(payload).subspan(head, leftBytes), left);
  PutList(std::span(payload).subspan(head + leftBytes, rightBytes), right);
  return payload;
}

SampleFrame Frame3D(std::span<const SampleSounding> left, std::span<const SampleSounding> right,
                    float depthFeet, std::int32_t mercX, std::int32_t mercY) {
  SampleFrame frame = Frame(9, depthFeet, mercX, mercY, 0);
  frame.Samples = Payload3D(left, right);
  return frame;
}

EchogramWriter::EchogramWriter(int formatWord) : formatWord_(formatWord) {}

void EchogramWriter::Start(std::vector<std::uint8_t>& target) {
  std::array<std::uint8_t, 8> header{};
  PutU16(header, 0, static_cast<std::uint16_t>(formatWord_));
  PutU16(header, 4, 0x07B5);
  target.insert(target.end(), header.begin(), header.end());
  position_ += header.size();
}

void EchogramWriter::Add(const SampleFrame& frame, std::vector<std::uint8_t>& target) {
  const SampleLayout& at = LayoutOf(formatWord_);
  const WriterLayout& more = WriterLayoutOf(formatWord_);
  const std::size_t size = at.HeaderLength + frame.Samples.size();
  const std::size_t start = target.size();
  target.resize(start + size);
  const std::span<std::uint8_t> bytes = std::span(target).subspan(start);
  std::ranges::copy(frame.Samples, bytes.begin() + static_cast<std::ptrdiff_t>(at.HeaderLength));

  const auto offset = static_cast<std::uint32_t>(position_);
  std::int32_t& count = counts_[frame.Channel & 0xFF];
  const auto wholeSize = static_cast<std::int16_t>(size);

  PutU32(bytes, more.FrameOffset, frame.FrameOffset.value_or(offset));
  if (frame.Channel < links_.size()) links_[frame.Channel] = offset;
  for (std::size_t i = 0; i < more.LinkCount; ++i) PutU32(bytes, more.Links + 4 * i, links_[i]);
  for (const Filler& filler : formatWord_ == 2 ? std::span(Sl2Fillers) : std::span(Sl3Fillers)) {
    if (filler.Offset + 4 <= at.HeaderLength) PutU32(bytes, filler.Offset, filler.Value);
  }
  PutU16(bytes, at.FrameSize, Bits(frame.FrameSize.value_or(wholeSize)));
  PutU16(bytes, more.PrevSize, Bits(frame.PrevSize.value_or(prevSize_)));
  PutU16(bytes, at.Channel, frame.Channel);
  PutU16(bytes, at.SampleCount,
         Bits(frame.SampleCount.value_or(static_cast<std::int16_t>(frame.Samples.size()))));
  PutU32(bytes, at.FrameIndex, Bits(frame.FrameIndex.value_or(count)));
  PutU32(bytes, more.Aux28, frame.Aux28);
  PutF32(bytes, at.LowerLimit, frame.LowerLimit);
  if (more.Aux32 < bytes.size()) bytes[more.Aux32] = frame.Aux32;
  PutU32(bytes, at.TimeBase, Bits(frame.TimeBase));
  PutF32(bytes, at.WaterDepth, frame.WaterDepth);
  PutU32(bytes, more.Aux44, frame.Aux44);
  PutF32(bytes, more.Speed, frame.Speed);
  PutU32(bytes, more.Aux68, frame.Aux68);
  PutU32(bytes, at.MercX, Bits(frame.MercX));
  PutU32(bytes, at.MercY, Bits(frame.MercY));
  PutF32(bytes, at.Course, frame.Course);
  PutU32(bytes, more.Aux7C, frame.Aux7C);
  PutF32(bytes, at.Heading, frame.Heading);
  PutU32(bytes, at.TimeOffset, Bits(frame.TimeOffset.value_or(1000 * count)));

  ++count;
  prevSize_ = wholeSize;
  position_ += size;
}

std::vector<std::uint8_t> EchogramBytes(int formatWord, std::span<const SampleFrame> frames) {
  std::vector<std::uint8_t> bytes;
  EchogramWriter writer(formatWord);
  writer.Start(bytes);
  for (const SampleFrame& frame : frames) writer.Add(frame, bytes);
  return bytes;
}

std::vector<std::uint8_t> EchogramBytes(int formatWord, std::initializer_list<SampleFrame> frames) {
  return EchogramBytes(formatWord, std::span(frames.begin(), frames.size()));
}

std::vector<std::size_t> FrameStarts(std::span<const std::uint8_t> echogram) {
  std::vector<std::size_t> starts;
  if (echogram.size() < 8) return starts;
  const SampleLayout& at = LayoutOf(echogram[0] | echogram[1] << 8);
  for (std::size_t start = 8; start + at.HeaderLength <= echogram.size();) {
    starts.push_back(start);
    const int size = echogram[start + at.FrameSize] | echogram[start + at.FrameSize + 1] << 8;
    if (size == 0 || size > 0x7FFF) break;
    start += static_cast<std::size_t>(size);
  }
  return starts;
}

bool WriteBytes(const std::string& path, std::span<const std::uint8_t> bytes) {
  SampleFile file = OpenSample(path);
  if (!file) return false;
  const bool written =
      bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  return std::fclose(file.release()) == 0 && written;
}

}  // namespace sondrix
