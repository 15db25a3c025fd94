#pragma once

#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"

#include <cstdint>
#include <optional>
#include <span>

namespace sondrix {

struct ReadWatch;

// What stands in a frame's head about its lengths.
struct SlFrameSizes {
  std::uint32_t offset = 0;            // of the frame in the file, the low 32 bits
  std::uint16_t size = 0, before = 0;  // bytes of this frame and of the one before
  bool areSound = false;               // size, header and samples fit each other
  bool areTold = false;                // and the samples' count is one to go by
};

// Of a frame that begins at the first of bytes, which are at least bodyEnd.
SlFrameSizes SizesOf(std::span<const std::uint8_t> bytes, const SlFormat& format);

// Whether a sound frame begins somewhere in the first bytes of an echogram, as far as they tell.
bool HoldsFrame(std::span<const std::uint8_t> head, const SlFormat& format);

// All sound frames of an echogram, one after another. A frame is sound whose sizes fit and which tells its
// own place in the file, or the size of the frame before, or whose size the next frame tells; one that
// doesn't tell its samples needs its place and the next frame. What isn't sound is stepped over, whatever
// lengths it tells: the search begins behind the head of the last sound frame, since bytes may be missing in
// it.
class SlFrameWalk {
 public:
  // Fault 6 for a format word that is none, 9 without one.
  SlFrameWalk(SlSource& source, const ReadWatch& watch);

  const SlFormat& Format() const { return format_; }

  // Goes to the first or next frame; false behind the last. EndAsked when the watch says so; faults of
  // SlSource, and ChangedMeanwhile.
  bool Next();
  SlFrame Frame() const { return frame_; }
  std::uint32_t Clock() const { return static_cast<std::uint32_t>(frame_.TimeBase); }

  std::uint64_t DamagedBytes() const { return damagedBytes_; }
  std::uint64_t CutFrames() const { return cutFrames_; }

 private:
  bool IsSoundAt(std::int64_t at);
  std::optional<std::int64_t> Search(std::int64_t from);
  void TellProgress(std::int64_t at);
  void EndAt(std::int64_t expected);

  SlSource& source_;
  const ReadWatch& watch_;
  SlFormat format_;
  SlFrame frame_;
  std::int64_t at_ = 0;     // of the last sound frame; 0: none yet
  std::uint16_t size_ = 0;  // its bytes
  std::int64_t told_ = 0;   // up to where the watch knows
  std::uint64_t damagedBytes_ = 0, cutFrames_ = 0;
};

}  // namespace sondrix
