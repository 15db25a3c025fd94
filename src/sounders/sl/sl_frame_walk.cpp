#include "sounders/sl/sl_frame_walk.h"

#include "core/channel.h"
#include "sonar/layout/words.h"
#include "sounders/common/reading.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr std::int64_t WatchStep = 1 << 20;  // bytes between two questions to the watch

// The headers of SL3 frames: by channel and by the kind that the frame tells; others are taken for sound
// within limits.
constexpr std::uint32_t ShortHeader = 128;  // of the channels 7 and 8
constexpr std::uint32_t LongestHeader = 256;
struct FrameKind {
  std::uint32_t version, header;
};
constexpr FrameKind FrameKinds[] = {{10, 168}, {13, 180}};

bool IsSl3Header(std::uint32_t header, std::uint32_t version, std::uint8_t channel, const SlFormat& format) {
  if (header == static_cast<std::uint32_t>(format.HeaderLength)) return true;
  if (channel == 7 || channel == 8) return header == ShortHeader;
  for (const FrameKind& kind : FrameKinds) {
    if (kind.version == version) return header == kind.header;
  }
  return header >= ShortHeader && header <= LongestHeader;
}

}  // namespace

SlFrameSizes SizesOf(std::span<const std::uint8_t> bytes, const SlFormat& format) {
  const SlOffsets& at = *format.offsets;
  const std::uint8_t* frame = bytes.data();
  SlFrameSizes sizes = {
      .offset = U32At(frame), .size = U16At(frame + at.FrameSize), .before = U16At(frame + at.PrevSize)};
  if (sizes.size < at.bodyEnd) return sizes;
  const bool isSl3 = at.SampleCount == Sl3Offsets.SampleCount;
  const std::uint32_t samples = isSl3 ? U32At(frame + at.SampleCount) : U16At(frame + at.SampleCount);
  const std::uint8_t channel = frame[at.Channel];
  const std::uint32_t header = sizes.size - std::min<std::uint32_t>(samples, sizes.size);
  sizes.areTold = isSl3 ? IsSl3Header(header, U32At(frame + Sl3FrameVersion), channel, format)
                        : header == static_cast<std::uint32_t>(format.HeaderLength);
  // Some frames don't tell how many samples they have: those of 3D, the first of a channel, and in older
  // recordings those without a depth.
  const bool mayMiss = channel == ChannelByte(Channel::Scan3D) ||
                       (samples == 0 && U32At(frame + at.FrameIndex) == 0) ||
                       (isSl3 && (U16At(frame + at.Flags) & DepthFlag) == 0);
  sizes.areSound = sizes.areTold || mayMiss;
  return sizes;
}

bool HoldsFrame(std::span<const std::uint8_t> head, const SlFormat& format) {
  const std::size_t length = format.offsets->bodyEnd;
  for (std::size_t at = FileHeaderLength; at + length <= head.size(); ++at) {
    const SlFrameSizes sizes = SizesOf(head.subspan(at), format);
    if (!sizes.areSound) continue;
    if (sizes.offset == at) return true;
    const std::size_t next = at + sizes.size;
    if (!sizes.areTold || next + length > head.size()) continue;
    const SlFrameSizes behind = SizesOf(head.subspan(next), format);
    if (behind.areTold && behind.before == sizes.size) return true;
  }
  return false;
}

SlFrameWalk::SlFrameWalk(SlSource& source, const ReadWatch& watch)
    : source_(source), watch_(watch), format_(SlFormatOf(U16At(source.Bytes(0, 2).data()))) {
  TellProgress(0);
}

void SlFrameWalk::TellProgress(std::int64_t at) {
  if (watch_.isToEnd && watch_.isToEnd()) throw EndAsked();
  if (at <= told_) return;
  watch_.Add(at - told_);
  told_ = at;
}

bool SlFrameWalk::IsSoundAt(std::int64_t at) {
  const std::size_t length = format_.offsets->bodyEnd;
  if (!source_.Has(at, length)) return false;
  const SlFrameSizes sizes = SizesOf(source_.Bytes(at, length), format_);
  if (!sizes.areSound || !source_.Has(at, sizes.size)) return false;
  const bool isInPlace = sizes.offset == static_cast<std::uint32_t>(at);
  if (sizes.areTold && isInPlace) return true;
  if (sizes.areTold && at_ != 0 && at == at_ + size_ && sizes.before == size_) return true;
  if (!sizes.areTold && !isInPlace) return false;
  const std::int64_t next = at + sizes.size;
  if (!source_.Has(next, length)) return isInPlace && next == source_.FileLength();
  const SlFrameSizes behind = SizesOf(source_.Bytes(next, length), format_);
  return behind.areSound && behind.before == sizes.size &&
         (behind.areTold || behind.offset == static_cast<std::uint32_t>(next));
}

std::optional<std::int64_t> SlFrameWalk::Search(std::int64_t from) {
  const auto length = static_cast<std::int64_t>(format_.offsets->bodyEnd);
  const std::int64_t end = source_.FileLength() - length;
  while (from <= end) {
    if (from - told_ >= WatchStep) TellProgress(from);
    const auto count = std::min<std::int64_t>(source_.FileLength() - from, SlSource::MaxRequest);
    const auto bytes = source_.Bytes(from, static_cast<std::size_t>(count));
    std::int64_t candidate = 0;
    const auto mayBeOne = [&] {
      const SlFrameSizes sizes = SizesOf(bytes.subspan(static_cast<std::size_t>(candidate)), format_);
      return sizes.areTold ||
             (sizes.areSound && sizes.offset == static_cast<std::uint32_t>(from + candidate));
    };
    while (candidate + length <= count && !mayBeOne()) ++candidate;
    from += candidate;
    if (candidate + length > count) continue;
    if (IsSoundAt(from)) return from;
    ++from;
  }
  return std::nullopt;
}

// Counts what lies behind the last frame.
void SlFrameWalk::EndAt(std::int64_t expected) {
  const std::int64_t rest = source_.FileLength() - expected;
  const auto length = static_cast<std::int64_t>(format_.offsets->bodyEnd);
  bool isCut = rest < length;
  if (!isCut) {
    const SlFrameSizes sizes = SizesOf(source_.Bytes(expected, static_cast<std::size_t>(length)), format_);
    isCut = sizes.areSound && sizes.size > rest &&
            (sizes.offset == static_cast<std::uint32_t>(expected) || sizes.before == size_);
  }
  if (isCut && rest > 0) ++cutFrames_;
  if (!isCut) damagedBytes_ += static_cast<std::uint64_t>(rest);
}

bool SlFrameWalk::Next() {
  const std::int64_t expected = at_ == 0 ? FileHeaderLength : at_ + size_;
  std::int64_t at = expected;
  if (!IsSoundAt(at)) {
    const std::optional<std::int64_t> found =
        Search(at_ == 0 ? FileHeaderLength : at_ + format_.offsets->bodyEnd);
    if (!found) {
      EndAt(std::min(expected, source_.FileLength()));
      TellProgress(source_.FileLength());
      if (source_.HasChanged()) throw ChangedMeanwhile();
      return false;
    }
    at = *found;
    damagedBytes_ += static_cast<std::uint64_t>(at > expected ? at - expected : expected - at);
  }
  const auto bytes = source_.Bytes(at, format_.offsets->bodyEnd);
  frame_ = SlBody(bytes, format_, SlLead(bytes, format_));
  size_ = static_cast<std::uint16_t>(frame_.FrameSize);
  at_ = at;
  if (at - told_ >= WatchStep) TellProgress(at);
  return true;
}

}  // namespace sondrix
