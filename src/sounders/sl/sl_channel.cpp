#include "sounders/sl/sl_channel.h"

#include "core/channel.h"
#include "sonar/layout/sl_format.h"
#include "sounders/common/calendar.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace sondrix {
namespace {

constexpr float DeepestWater = 36'100;  // feet, a little more than anywhere

constexpr std::uint32_t LastDate = 4'102'444'800;  // clocks behind 2100 aren't set either

// From one frame of a channel to its next, milliseconds: a step back or a longer one is a break.
constexpr std::int64_t MostStep = 5000, MostBack = 1000;

// Of the records of channels that aren't the best, beside as much as this for each of its frames, bytes.
constexpr std::uint64_t SpareRecords = 32 << 20;
constexpr std::uint64_t RecordsPerFrame = 28;
constexpr std::uint64_t TrimStep = 1 << 16;  // frames

// The smaller, the better.
int RankOf(std::uint8_t channel) {
  if (channel == ChannelByte(Channel::Primary)) return -2;
  if (channel == ChannelByte(Channel::Downscan)) return -1;
  return channel;
}

bool IsDate(const SlFrame& frame) {
  const auto clock = static_cast<std::uint32_t>(frame.TimeBase);
  // Without a clock it is the time since the unit was switched on, as the offset is.
  return clock >= FirstDate && clock < LastDate && frame.TimeBase != frame.TimeOffset;
}

}  // namespace

bool IsDepth(float feet) { return feet > 0 && feet < DeepestWater; }

SlChannel& SlChannels::Of(std::uint8_t number) {
  std::int16_t& place = places_[number];
  if (place == 0) {
    channels_.emplace_back().number = number;
    place = static_cast<std::int16_t>(channels_.size());
    channels_.back().isKept = which_ == Every || which_ == number;
  }
  return channels_[static_cast<std::size_t>(place - 1)];
}

SlChannel* SlChannels::Find(int number) {
  const auto found = std::ranges::find(channels_, number, &SlChannel::number);
  return found == channels_.end() ? nullptr : &*found;
}

void SlChannels::Add(const SlFrame& frame) {
  if (frames_ % TrimStep == 0) Trim();
  SlChannel& channel = Of(frame.Channel);
  const bool isDepthFlagged = (frame.Flags & DepthFlag) != 0;
  const bool isFixFlagged = (frame.Flags & PositionFlag) != 0;
  if (frames_ == 0) firstOffset_ = frame.TimeOffset;
  ++frames_;
  flaggedDepthFrames_ += isDepthFlagged;
  flaggedFixFrames_ += isFixFlagged;
  fixes_ += isFixFlagged;
  if (channel.frames == 0 && !startTime_ && IsDate(frame)) {
    startTime_ = std::int64_t{1000} * static_cast<std::uint32_t>(frame.TimeBase);
  }
  ++channel.frames;
  if (IsDepth(frame.WaterDepth)) ++(isDepthFlagged ? channel.flaggedDepths : channel.otherDepths);
  if (!channel.isKept) return;

  SlFix fix = {.frame = static_cast<std::uint32_t>(channel.depths.size()),
               .x = frame.MercX,
               .y = frame.MercY,
               .isFlagged = isFixFlagged,
               .isFresh = channel.seenFixes != fixes_,
               .isChange = true,
               .isBehindBreak = true};
  channel.seenFixes = fixes_;
  if (channel.depths.empty()) {
    channel.fixes.Add(fix);
  } else {
    const std::int64_t step = std::int64_t{frame.TimeOffset} - channel.depths.Last().time;
    fix.isBehindBreak = step > MostStep || step < -MostBack;
    fix.isChange = fix.x != channel.fixes.Last().x || fix.y != channel.fixes.Last().y;
    if (fix.isChange) ++(fix.isFresh ? channel.flaggedChanges : channel.otherChanges);
    // A flag is a fix of its own where it isn't set in all frames.
    const bool isFix = fix.isFresh && flaggedFixFrames_ < frames_;
    if (fix.isChange || fix.isBehindBreak || isFix) channel.fixes.Add(fix);
  }
  channel.depths.Add({frame.TimeOffset, frame.WaterDepth, isDepthFlagged});
}

std::uint64_t SlChannels::DepthsOf(const SlChannel& channel) const {
  return channel.flaggedDepths + (AreDepthsFlagged() ? 0 : channel.otherDepths);
}

SlChannel* SlChannels::Best() {
  const auto rank = [this](const SlChannel& channel) {
    return std::tuple(~DepthsOf(channel), RankOf(channel.number));
  };
  const auto best = std::ranges::min_element(channels_, {}, rank);
  return best == channels_.end() ? nullptr : &*best;
}

FixFlags SlChannels::FixFlagsOf(const SlChannel& channel) const {
  if (flaggedFixFrames_ == 0 || flaggedFixFrames_ == frames_) return FixFlags::None;
  // Flags that hardly ever stand where the numbers change are none.
  if (channel.otherChanges > 9 * channel.flaggedChanges) return FixFlags::None;
  const bool isMostly = flaggedFixFrames_ * 2 > frames_;
  const bool isMoreThanFixes = channel.flaggedChanges * 2 < channel.frames;
  return isMostly && isMoreThanFixes ? FixFlags::Valid : FixFlags::NewFix;
}

void SlChannels::Forget(SlChannel& channel) {
  channel.depths.Clear();
  channel.fixes.Clear();
  channel.isKept = false;
}

void SlChannels::KeepOnly(const SlChannel& channel) {
  for (SlChannel& other : channels_) {
    if (&other != &channel) Forget(other);
  }
}

// Forgets the channels that are the least likely to be chosen, until what is kept isn't more than allowed.
void SlChannels::Trim() {
  std::uint64_t bytes = 0;
  for (const SlChannel& channel : channels_) bytes += channel.Bytes();
  const SlChannel* best = Best();
  if (best == nullptr) return;
  while (bytes > SpareRecords + RecordsPerFrame * best->frames) {
    SlChannel* worst = nullptr;
    for (SlChannel& channel : channels_) {
      if (!channel.isKept || &channel == best) continue;
      const bool isWorse = worst == nullptr || std::tuple(DepthsOf(channel), RankOf(worst->number)) <
                                                   std::tuple(DepthsOf(*worst), RankOf(channel.number));
      if (isWorse) worst = &channel;
    }
    if (worst == nullptr) return;
    bytes -= worst->Bytes();
    Forget(*worst);
  }
}

}  // namespace sondrix
