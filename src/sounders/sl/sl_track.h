#pragma once

#include "sounders/sl/sl_channel.h"
#include "sounders/sl/track_mending.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace sondrix {

// Where the boat was in a frame, metres on the Mercator sphere.
struct SlPlace {
  double x = 0, y = 0;
  bool isKnown = false;     // there is a fix, or one shortly before or behind
  bool beginsLine = false;  // of the frame: time is missing before it, or the fix was
};

// The track of a channel, mended (see TrackMender) as long as fix follows fix. It is reckoned a window of
// fixes at a time, and gives back the channel's records behind it.
//
// Recorders repeat the last fix until the next, also when none comes. Where its numbers don't change, it is
// taken for true as often as fixes come in this recording, so that a boat that lies still lies still. But
// where the next fix is long in coming and then far away, the fix was lost: there is no place from a usual
// interval behind the last fix on.
class SlTrack {
 public:
  SlTrack(SlChannel& channel, FixFlags flags);

  // Frames in their order.
  SlPlace At(std::uint32_t frame);
  double FixInterval() const { return interval_; }  // seconds, from fix to fix

 private:
  struct Fix {
    std::uint32_t frame = 0;
    double time = 0, x = 0, y = 0;  // seconds, metres
    bool isNone = false, isBehindBreak = false;
    bool isHeld = false;  // the stored place before it stayed true at the fix moments between
  };
  // How a stretch of fixes ends.
  enum class End { Open, Recording, Break, NoFix, Lost, Jump };
  // How a fix follows another.
  enum class Link { Same, Moved, Held, Lost, Jump };

  double TimeOf(std::uint32_t frame) const { return channel_.depths[frame].time * 1e-3; }
  std::uint32_t FrameCount() const { return static_cast<std::uint32_t>(channel_.depths.size()); }
  bool IsFix(const SlFix& fix) const;
  double IntervalOfFixes() const;
  std::optional<Fix> Read();
  void Take();
  Link LinkOf(const Fix& last, const Fix& next) const;
  void StartStretch();
  void SlideWindow();
  void FillWindow();
  void MendWindow();
  void AddHeld(const Fix& fix, double from, double until, bool isEnd);
  TrackPlace PlaceAt(double time);

  SlChannel& channel_;
  FixFlags flags_;
  double interval_;                  // seconds, from fix to fix
  double longGap_;                   // seconds
  double metresPerUnit_ = 1;         // on the ground
  std::size_t nextFix_ = 0;          // in the channel's fixes
  std::optional<Fix> next_, after_;  // the fixes that come

  std::vector<Fix> fixes_;  // the window, of the stretch
  End end_ = End::Recording;
  bool beginsWithMoment_ = false;  // the stretch, as far as the window holds its beginning
  bool isAtBeginning_ = false;
  bool beginsLine_ = false;
  std::uint32_t endFrame_ = 0;   // first frame behind the stretch
  std::uint32_t windowEnd_ = 0;  // first frame for which the window isn't good
  std::size_t fixAt_ = 0;        // in the window, of the frame
  std::vector<FixMoment> moments_;
  TrackMender mender_;
  std::span<const TrackKnot> knots_;
  std::size_t knotAt_ = 0;
};

}  // namespace sondrix
