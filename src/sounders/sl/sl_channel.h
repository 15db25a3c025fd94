#pragma once

#include "sonar/layout/sl_frame.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace sondrix {

// What is kept of a frame until its channel is chosen or not. Without initial values, so that a new block of
// them isn't touched.
struct SlDepth {
  std::int32_t time;  // milliseconds from the start of the recording
  float depth;        // feet, as told
  bool isFlagged;     // the frame says that it holds a depth
};

// The position that the frames of a channel hold from one of them on.
struct SlFix {
  std::uint32_t frame;
  std::int32_t x, y;   // metres on the Mercator sphere
  bool isFlagged;      // the frame says that it holds a position
  bool isFresh;        // a frame of any channel said so since the frame before
  bool isChange;       // other numbers than before
  bool isBehindBreak;  // the time before it is missing, or another one
};

// Records in blocks: a list that grows without moving what it holds, and gives back the blocks behind which
// a reader has come.
template <typename Record>
class SlBlocks {
 public:
  static constexpr std::size_t BlockSize = std::size_t{1} << 15;

  void Add(const Record& record) {
    if (size_ % BlockSize == 0) blocks_.push_back(std::make_unique_for_overwrite<Record[]>(BlockSize));
    blocks_.back()[size_++ % BlockSize] = record;
  }
  const Record& operator[](std::size_t index) const { return blocks_[index / BlockSize][index % BlockSize]; }
  const Record& Last() const { return (*this)[size_ - 1]; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::uint64_t Bytes() const { return blocks_.size() * BlockSize * sizeof(Record); }
  // No record before that one is asked for any more.
  void FreeBefore(std::size_t index) {
    for (; (freed_ + 1) * BlockSize <= index; ++freed_) blocks_[freed_].reset();
  }
  void Clear() {
    blocks_.clear();
    size_ = freed_ = 0;
  }

 private:
  std::vector<std::unique_ptr<Record[]>> blocks_;
  std::size_t size_ = 0, freed_ = 0;
};

// What the flags of a recording mean for positions.
enum class FixFlags {
  None,    // they don't tell: other numbers are a new fix
  NewFix,  // they stand in the frames with a new fix
  Valid,   // they stand in all frames but those without a fix: other numbers in the others are a new fix
};

// The frames of one channel.
struct SlChannel {
  std::uint8_t number = 0;
  std::uint64_t frames = 0;
  std::uint64_t flaggedDepths = 0, otherDepths = 0;    // frames with a depth, by their flag
  std::uint64_t flaggedChanges = 0, otherChanges = 0;  // of the position
  std::uint32_t seenFixes = 0;                         // of the recording's flags, up to its last frame
  SlBlocks<SlDepth> depths;
  SlBlocks<SlFix> fixes;
  bool isKept = true;

  std::uint64_t Bytes() const { return depths.Bytes() + fixes.Bytes(); }
};

// Whether a number is a depth that water can have, feet.
bool IsDepth(float feet);

// What a recording's frames hold, by channel. Of the channels that nobody will want it forgets all but the
// counts, so that it needs no more memory than for the best and a little.
class SlChannels {
 public:
  static constexpr int Every = -1;
  // The records of which channel are kept.
  explicit SlChannels(int which) : which_(which) {}

  void Add(const SlFrame& frame);

  const std::vector<SlChannel>& All() const { return channels_; }
  // The one with that number, null where no frame has it.
  SlChannel* Find(int number);
  // The one with the most frames that carry a depth; of equals the one that comes first in the order Primary,
  // Downscan, others by number. Null without any frame.
  SlChannel* Best();
  std::uint64_t DepthsOf(const SlChannel& channel) const;
  // Forgets the records of the others.
  void KeepOnly(const SlChannel& channel);
  // Whether the flags tell of depths: some frames have them, some don't.
  bool AreDepthsFlagged() const { return flaggedDepthFrames_ > 0 && flaggedDepthFrames_ < frames_; }
  FixFlags FixFlagsOf(const SlChannel& channel) const;
  // Milliseconds since 1970 UTC of the time offset 0, from the clock of the channels' first frames; none
  // where it tells no date.
  std::optional<std::int64_t> StartTime() const { return startTime_; }
  std::int32_t FirstOffset() const { return firstOffset_; }  // milliseconds, of the first frame

 private:
  SlChannel& Of(std::uint8_t number);
  static void Forget(SlChannel& channel);
  void Trim();

  int which_;
  std::vector<SlChannel> channels_;
  std::array<std::int16_t, 256> places_{};  // of a channel's number, in channels_, from 1
  std::uint64_t frames_ = 0, flaggedDepthFrames_ = 0, flaggedFixFrames_ = 0;
  std::uint32_t fixes_ = 0;  // frames with a flagged position so far
  std::optional<std::int64_t> startTime_;
  std::int32_t firstOffset_ = 0;
};

}  // namespace sondrix
