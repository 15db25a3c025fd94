#include "sonar/cut.h"

#include "core/fault.h"
#include "core/outputs.h"
#include "core/settings.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace sondrix {
namespace {

constexpr std::uint32_t Sl2FormatWord = 2;
constexpr std::uint32_t Sl2DeviceWord = 1973;
constexpr std::int64_t Sl2HeaderLength = 0x90;
constexpr std::uint32_t ChannelLinkCount = 6;

// A field that an SL2 frame takes over from an SL3 frame, or a constant that stands in its place.
struct MovedField {
  std::uint8_t target, source, width;
};
struct FixedField {
  std::uint8_t target;
  std::uint32_t value;
};

constexpr FixedField FixedFields[] = {
    {0x34, 0},          {0x38, 0},          {0x44, 0},          {0x48, 0},          {0x4C, 0},
    {0x50, 0xBF800000}, {0x54, 0xBF800000}, {0x58, 0xBF800000}, {0x5C, 0xBF800000}, {0x60, 0},
    {0x74, 0},          {0x84, 0x000002BA}, {0x88, 0x01140001}};

constexpr MovedField MovedFields[] = {
    {Sl2Offsets.Channel, Sl3Offsets.Channel, 2},       {Sl2Offsets.Aux28, Sl3Offsets.Aux28, 4},
    {Sl2Offsets.LowerLimit, Sl3Offsets.LowerLimit, 4}, {Sl2Offsets.Aux32, Sl3Offsets.Aux32, 1},
    {Sl2Offsets.WaterDepth, Sl3Offsets.WaterDepth, 4}, {Sl2Offsets.Speed, Sl3Offsets.Speed, 4},
    {Sl2Offsets.Aux68, Sl3Offsets.Aux68, 4},           {Sl2Offsets.MercX, Sl3Offsets.MercX, 4},
    {Sl2Offsets.MercY, Sl3Offsets.MercY, 4},           {Sl2Offsets.Course, Sl3Offsets.Course, 4},
    {Sl2Offsets.Aux7C, Sl3Offsets.Aux7C, 4},           {Sl2Offsets.Heading, Sl3Offsets.Heading, 4},
    {Sl2Offsets.TimeOffset, Sl3Offsets.TimeOffset, 4},
};

}  // namespace

void SlCut::Open(Outputs& outputs, std::string_view path, std::int64_t sourceLength) {
  outputs.Guard(path);
  DeleteIfThere(path);
  size_ = std::max(std::min(sourceLength, MaxLength) + 1, FileHeaderLength);
  // Zeroed pages cost memory only once they are touched.
  buffer_.reset(static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(size_), 1)));
  if (!buffer_) throw std::bad_alloc();
  path_ = path;
  file_ = outputs.Open(path);
  Put32(0, Sl2FormatWord);
  Put32(4, Sl2DeviceWord);
}

void SlCut::Put(std::int64_t at, std::span<const std::uint8_t> bytes) {
  if (at + static_cast<std::int64_t>(bytes.size()) > size_) throw Fault(FaultNumber::Subscript);
  if (!bytes.empty()) std::memcpy(buffer_.get() + at, bytes.data(), bytes.size());
}

void SlCut::Put16(std::int64_t at, std::uint32_t value) {
  const std::uint8_t bytes[] = {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)};
  Put(at, bytes);
}

void SlCut::Put32(std::int64_t at, std::uint32_t value) {
  Put16(at, value);
  Put16(at + 2, value >> 16);
}

void SlCut::MoveToSl2(std::int64_t at, const CutSource& source, const SlFrame& frame) {
  // 0x30 is wiped before its upper half gets Aux32.
  Put32(at + 0x30, 0);
  for (const FixedField& field : FixedFields) Put32(at + field.target, field.value);
  for (const MovedField& field : MovedFields) {
    Put(at + field.target, source.body.subspan(field.source, field.width));
  }
  Put16(at + Sl2Offsets.SampleCount, static_cast<std::uint16_t>(frame.SampleCount));
  Put(at + Sl2HeaderLength, source.samples);
}

void SlCut::Add(const CutSource& source, const SlFrame& frame, const SlFormat& format,
                const Settings& settings) {
  const std::int64_t at = frame.FrameSize * count_ + FileHeaderLength;
  const auto position = static_cast<std::uint32_t>(at);
  Put(at, source.frame);
  Put32(at, position);
  for (std::uint32_t i = 0; i < ChannelLinkCount; ++i) {
    Put32(at + static_cast<std::int64_t>(Sl2ChannelLinks + std::size_t{4} * i),
          i == frame.Channel ? position : 0);
  }
  const auto frameSize = static_cast<std::uint16_t>(frame.FrameSize);
  Put16(at + Sl2Offsets.FrameSize, frameSize);
  Put16(at + Sl2Offsets.PrevSize, count_ == 0 ? 0 : frameSize);
  Put32(at + Sl2Offsets.FrameIndex, static_cast<std::uint32_t>(count_));
  if (format.FormatWord == 3) MoveToSl2(at, source, frame);
  if (settings.UseRad && frame.Heading != 0) {
    Put(at + Sl2Offsets.Course, source.body.subspan(format.offsets->Heading, 4));
  }
  if (settings.HideCut) {
    for (const int field : {Sl2Offsets.MercX, Sl2Offsets.MercY, Sl2Offsets.Course}) Put32(at + field, 0);
  }
  ++count_;
}

void SlCut::Close(Outputs& outputs, std::int64_t frameLength) {
  const std::int64_t length = frameLength * std::max<std::int64_t>(count_ - 1, 0) + FileHeaderLength;
  const std::string_view whole(reinterpret_cast<const char*>(buffer_.get()),
                               static_cast<std::size_t>(std::min(length, size_)));
  file_.Complete(std::span(&whole, 1));
  outputs.SetWhole(path_);
}

}  // namespace sondrix
