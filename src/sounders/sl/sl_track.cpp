#include "sounders/sl/sl_track.h"

#include "geo/constants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sondrix {
namespace {

constexpr double LongGap = 5;           // seconds: fixes further apart need a reason, but for where
constexpr double LongIntervals = 1.5;   // as many usual intervals are longer
constexpr double LongestInterval = 15;  // seconds
constexpr double FastestBoat = 30;      // m/s
constexpr double SlowestCourse = 0.5;   // m/s: a slower boat drifts, or lies at a fix that the receiver holds
constexpr double DefaultInterval = 1;   // seconds

constexpr std::size_t Context = 48;  // fixes to each side of what a window is used for
constexpr std::size_t WindowFixes = 1024;
constexpr int MostHeld = 32;  // held fixes at each end of a long rest

// No place on the Mercator sphere is as far.
constexpr double HalfWorld = std::numbers::pi * SemiMinor;

bool IsNone(const SlFix& fix) {
  return (fix.x == 0 && fix.y == 0) || std::abs(static_cast<double>(fix.x)) > HalfWorld ||
         std::abs(static_cast<double>(fix.y)) > HalfWorld;
}

// Seconds between changes of the position, counted.
struct ChangeIntervals {
  static constexpr double PerSecond = 100;
  std::array<std::uint32_t, static_cast<std::size_t>(LongestInterval* PerSecond)> counts{};
  std::uint64_t count = 0;

  void Add(double interval) {
    const double at = interval * PerSecond;
    if (at < 1 || at >= static_cast<double>(counts.size())) return;
    ++counts[static_cast<std::size_t>(at)];
    ++count;
  }
  static double Middle(std::size_t at) { return (static_cast<double>(at) + 0.5) / PerSecond; }
  // The mean of those about the lower fifth.
  double Low() const {
    std::size_t low = 0;
    for (std::uint64_t below = counts[0]; below * 5 < count; below += counts[++low]) {
    }
    double sum = 0, weight = 0;
    for (std::size_t at = low - low / 6; at < counts.size() && at <= low + low / 5; ++at) {
      sum += counts[at] * Middle(at);
      weight += counts[at];
    }
    return sum / weight;
  }
  // By how much they miss multiples of an interval in the mean, as a share of it.
  double MissOf(double interval) const {
    double sum = 0;
    for (std::size_t at = 0; at < counts.size(); ++at) {
      const double share = Middle(at) / interval;
      sum += counts[at] * std::abs(share - std::round(share));
    }
    return sum / static_cast<double>(count);
  }
};

}  // namespace

SlTrack::SlTrack(SlChannel& channel, FixFlags flags)
    : channel_(channel),
      flags_(flags),
      interval_(IntervalOfFixes()),
      longGap_(std::max(LongGap, LongIntervals * interval_)) {
  next_ = Read();
  after_ = Read();
}

bool SlTrack::IsFix(const SlFix& fix) const {
  if (fix.isBehindBreak) return true;
  if (flags_ == FixFlags::None) return fix.isChange;
  return flags_ == FixFlags::NewFix ? fix.isFresh : fix.isFlagged && fix.isChange;
}

// A slow boat's fixes often repeat the numbers, and no change shows then: the changes come at multiples of
// the interval, be it that none comes at the interval itself.
double SlTrack::IntervalOfFixes() const {
  constexpr int mostParts = 4;
  constexpr double mostMiss = 0.1;
  ChangeIntervals intervals;
  std::optional<double> last;
  for (std::size_t i = 0; i < channel_.fixes.size(); ++i) {
    const SlFix& fix = channel_.fixes[i];
    if (!IsFix(fix)) continue;
    const double time = TimeOf(fix.frame);
    if (last && !fix.isBehindBreak) intervals.Add(time - *last);
    last = time;
  }
  if (intervals.count == 0) return DefaultInterval;
  const double low = std::max(intervals.Low(), 2 * LeastFixSpacing);
  for (int parts = 1; parts <= mostParts && low / parts > 2 * LeastFixSpacing; ++parts) {
    if (intervals.MissOf(low / parts) < mostMiss) return low / parts;
  }
  return low;
}

std::optional<SlTrack::Fix> SlTrack::Read() {
  while (nextFix_ < channel_.fixes.size()) {
    const SlFix& fix = channel_.fixes[nextFix_++];
    if (!IsFix(fix)) continue;
    return Fix{.frame = fix.frame,
               .time = TimeOf(fix.frame),
               .x = static_cast<double>(fix.x),
               .y = static_cast<double>(fix.y),
               .isNone = IsNone(fix),
               .isBehindBreak = fix.isBehindBreak};
  }
  return std::nullopt;
}

void SlTrack::Take() {
  next_ = after_;
  after_ = Read();
}

SlTrack::Link SlTrack::LinkOf(const Fix& last, const Fix& next) const {
  const auto unitsBetween = [](const Fix& a, const Fix& b) {
    return std::max(std::abs(b.x - a.x), std::abs(b.y - a.y));
  };
  const double gap = next.time - last.time, units = unitsBetween(last, next);
  if (gap < LeastFixSpacing) return units == 0 ? Link::Same : Link::Jump;
  const double metres = std::hypot(next.x - last.x, next.y - last.y) * metresPerUnit_;
  if (metres / std::max(gap, interval_) > FastestBoat) return Link::Jump;
  const bool isSlow = metres / gap < SlowestCourse;
  if (flags_ == FixFlags::NewFix) return gap <= longGap_ || isSlow ? Link::Moved : Link::Lost;
  // The way of one interval, as far as the neighbours tell.
  const auto stepOf = [&](const Fix& a, const Fix& b) {
    return unitsBetween(a, b) * std::min(1.0, interval_ / std::max(b.time - a.time, LeastFixSpacing));
  };
  double step = 0;
  if (after_ && !after_->isNone && !after_->isBehindBreak) step = stepOf(next, *after_);
  if (fixes_.size() > 1) step = std::max(step, stepOf(fixes_[fixes_.size() - 2], last));
  if (gap <= longGap_) return units <= 1 + step / 2 ? Link::Held : Link::Moved;
  return units <= 1.5 + step || isSlow ? Link::Held : Link::Lost;
}

void SlTrack::StartStretch() {
  beginsLine_ = endFrame_ > 0 && (next_->isBehindBreak || end_ == End::Lost);
  beginsWithMoment_ = !next_->isBehindBreak;
  isAtBeginning_ = true;
  fixes_.assign(1, *next_);
  fixAt_ = 0;
  end_ = End::Open;
  metresPerUnit_ = 1 / std::cosh(next_->y / SemiMinor);
  Take();
  FillWindow();
  MendWindow();
}

void SlTrack::SlideWindow() {
  const std::size_t gone = fixes_.size() - 2 * Context;
  fixes_.erase(fixes_.begin(), fixes_.begin() + static_cast<std::ptrdiff_t>(gone));
  fixAt_ -= std::min(fixAt_, gone);
  isAtBeginning_ = false;
  FillWindow();
  MendWindow();
}

void SlTrack::FillWindow() {
  while (end_ == End::Open && fixes_.size() < WindowFixes + 2 * Context) {
    if (!next_) {
      end_ = End::Recording;
    } else if (next_->isBehindBreak) {
      end_ = End::Break;
    } else if (next_->isNone || fixes_.back().isNone) {
      end_ = End::NoFix;
    } else {
      next_->time = std::max(next_->time, fixes_.back().time);
      const Link link = LinkOf(fixes_.back(), *next_);
      if (link == Link::Lost) end_ = End::Lost;
      if (link == Link::Jump) end_ = End::Jump;
      if (end_ != End::Open) break;
      next_->isHeld = link == Link::Held;
      if (link != Link::Same) fixes_.push_back(*next_);
      Take();
    }
  }
  endFrame_ = next_ && end_ != End::Open ? next_->frame : FrameCount();
}

// The stored place at the moments from one fix until another or the end, as often as fixes come.
void SlTrack::AddHeld(const Fix& fix, double from, double until, bool isEnd) {
  const double share = (until - from) / interval_;
  const double count = isEnd ? std::floor(share + 0.1) + 1 : std::round(share);
  if (count < 2) return;
  const double step = isEnd ? interval_ : (until - from) / count;
  for (double i = 1; i < count; ++i) {
    if (i == MostHeld && count > 2 * MostHeld) i = count - MostHeld;
    moments_.push_back({from + i * step, fix.x, fix.y});
  }
}

void SlTrack::MendWindow() {
  moments_.clear();
  for (std::size_t i = 0; i < fixes_.size(); ++i) {
    const Fix& fix = fixes_[i];
    FixMoment moment = {fix.time, fix.x, fix.y};
    if (i == 0 && isAtBeginning_ && !beginsWithMoment_ && fixes_.size() > 1) {
      // The fix that the first frame holds came before it.
      const double behind = fixes_[1].time;
      const double intervals = fixes_[1].isHeld ? std::ceil((behind - fix.time) / interval_ - 0.2) : 1;
      moment.time = std::min(fix.time, behind - std::max(intervals, 1.0) * interval_);
    }
    if (i > 0 && fix.isHeld) AddHeld(fixes_[i - 1], moments_.back().time, fix.time, false);
    moments_.push_back(moment);
  }
  if (end_ != End::Open && end_ != End::Lost && flags_ != FixFlags::NewFix) {
    AddHeld(fixes_.back(), fixes_.back().time, TimeOf(endFrame_ - 1), true);
  }
  knots_ = mender_.Mend(moments_);
  knotAt_ = 0;
  windowEnd_ = end_ == End::Open ? fixes_[fixes_.size() - Context].frame : endFrame_;
}

TrackPlace SlTrack::PlaceAt(double time) {
  if (knots_.size() == 1) return {knots_[0].x, knots_[0].y};
  const TrackKnot &first = knots_.front(), &last = knots_.back();
  if (time <= first.time) {
    return PlaceBeyond(first, knots_[1], std::max(time, first.time - interval_));
  }
  if (time >= last.time) {
    return PlaceBeyond(last, knots_[knots_.size() - 2], std::min(time, last.time + interval_));
  }
  while (knots_[knotAt_ + 1].time <= time) ++knotAt_;
  while (knots_[knotAt_].time > time) --knotAt_;
  return PlaceBetween(knots_[knotAt_], knots_[knotAt_ + 1], time);
}

SlPlace SlTrack::At(std::uint32_t frame) {
  SlPlace place;
  if (frame >= endFrame_) {
    StartStretch();
    place.beginsLine = beginsLine_;
  }
  while (frame >= windowEnd_) SlideWindow();
  const double time = TimeOf(frame);
  channel_.depths.FreeBefore(frame);
  channel_.fixes.FreeBefore(nextFix_);
  if (fixes_.front().isNone) return place;
  while (fixAt_ + 1 < fixes_.size() && fixes_[fixAt_ + 1].frame <= frame) ++fixAt_;

  const bool mayBeOld = end_ == End::Lost || (end_ != End::Open && flags_ == FixFlags::NewFix);
  const double allowed = end_ == End::Lost ? interval_ : longGap_;
  if (mayBeOld && time > fixes_.back().time + allowed + LeastFixSpacing) return place;
  const TrackPlace mended = PlaceAt(time);
  place.x = mended.x;
  place.y = mended.y;
  place.isKnown = true;
  const Fix& fix = fixes_[fixAt_];
  const bool isMoment = frame == fix.frame && (fixAt_ > 0 || !isAtBeginning_ || beginsWithMoment_);
  if (isMoment) {
    place.x = std::clamp(place.x, fix.x - MostFromFix, fix.x + MostFromFix);
    place.y = std::clamp(place.y, fix.y - MostFromFix, fix.y + MostFromFix);
  }
  return place;
}

}  // namespace sondrix
