#include "sounders/nmea/nmea_track.h"

#include "geo/near_places.h"
#include "sounders/common/calendar.h"

#include <algorithm>
#include <cmath>

namespace sondrix {

namespace {

// Depths that wait for a fix that doesn't come: more than any sounder tells within the gap.
constexpr std::size_t MostWaiting = 4096;
constexpr double UndatedGap = 3600;  // seconds; a log that was off for longer may go on another day
constexpr double Slack = 1e-6;       // of sums of times
constexpr double Undated = NmeaTrack::UndatedDay / 2.0 * SecondsOfDay;  // times before it have no date yet

// Where between two epochs a line stands by the logger's clock, 0 to 1; not a number where it doesn't tell.
double LoggedPart(const LoggerTime& from, const LoggerTime& to, const LoggerTime& at) {
  if (!at.isFine || at.clock != from.clock || at.clock != to.clock || at.clock == LoggerTime::Clock::None)
    return Unknown;
  const double length = to.seconds - from.seconds;
  return length > 0 ? std::clamp((at.seconds - from.seconds) / length, 0.0, 1.0) : Unknown;
}

double Between(double from, double to, double part) { return from + (to - from) * part; }

}  // namespace

void NmeaTrack::AddDepth(double metres, const LoggerTime& logged) {
  if (waiting_.size() == MostWaiting) GiveUp();
  waiting_.push_back({metres, Unknown, logged});
}

void NmeaTrack::AddPlaced(double metres, double longitude, double latitude) {
  GiveUp();
  Add({metres, Unknown, {}}, longitude, latitude);
}

void NmeaTrack::AddEpoch(const NmeaEpoch& epoch) {
  const double gap = epoch.clock - last_.clock;
  if (gap < 0 || gap > UndatedGap) LeaveUndated();
  SpreadUpTo(epoch);
  if (epoch.HasPosition()) {
    PlaceUpTo(epoch);
    lastFix_ = epoch;
  } else if (!(epoch.clock - lastFix_.clock <= FixGap + Slack)) {
    GiveUp();
  }
  last_ = epoch;
}

// Gives those that came since the last epoch their clocks.
void NmeaTrack::SpreadUpTo(const NmeaEpoch& epoch) {
  const double gap = epoch.clock - last_.clock;
  const std::size_t count = waiting_.size() - spread_;
  isTime_ = epoch.isTime && last_.isTime;
  if (gap > 0 && epoch.isTime == last_.isTime) {
    for (std::size_t i = 0; i < count; ++i) {
      Waiting& waiting = waiting_[spread_ + i];
      double part = LoggedPart(last_.logged, epoch.logged, waiting.logged);
      if (std::isnan(part) && gap <= FixGap + Slack)
        part = static_cast<double>(i + 1) / static_cast<double>(count + 1);
      waiting.clock = last_.clock + part * gap;
    }
  }
  spread_ = waiting_.size();
}

// Places those that have their clocks.
void NmeaTrack::PlaceUpTo(const NmeaEpoch& fix) {
  const double gap = fix.clock - lastFix_.clock;
  const bool isNear = gap > 0 && gap <= FixGap + Slack && fix.isTime == lastFix_.isTime;
  for (std::size_t i = 0; i < spread_; ++i) {
    const Waiting& waiting = waiting_[i];
    const double part = (waiting.clock - lastFix_.clock) / gap;
    if (isNear && part >= -Slack && part <= 1 + Slack) {
      hasPlaced_ = true;
      Add(waiting, LongitudeBetween(lastFix_.longitude, fix.longitude, part),
          Between(lastFix_.latitude, fix.latitude, part));
    } else {
      Add(waiting, Unknown, Unknown);
    }
  }
  waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(spread_));
  spread_ = 0;
}

void NmeaTrack::GiveUp() {
  for (const Waiting& waiting : waiting_) Add(waiting, Unknown, Unknown);
  waiting_.clear();
  spread_ = 0;
}

void NmeaTrack::Add(const Waiting& waiting, double longitude, double latitude) {
  double time = isTime_ ? waiting.clock : Unknown;
  if (std::isnan(time) && waiting.logged.clock == LoggerTime::Clock::Absolute) time = waiting.logged.seconds;
  const float metres = KeptMetres(waiting.metres);
  soundings_.Add({.longitude = KeptDegrees(longitude),
                  .latitude = KeptDegrees(latitude),
                  .time = KeptSeconds(time),
                  .recorded = metres,
                  .depth = metres});
}

void NmeaTrack::MoveLastEpoch(double longitude, double latitude) {
  if (last_.HasPosition()) {
    // Those before it are placed by what it said first.
    lastFix_.longitude = last_.longitude = longitude;
    lastFix_.latitude = last_.latitude = latitude;
    return;
  }
  NmeaEpoch epoch = last_;
  epoch.longitude = longitude;
  epoch.latitude = latitude;
  PlaceUpTo(epoch);
  lastFix_ = last_ = epoch;
}

void NmeaTrack::ShiftLastEpoch(double seconds) {
  if (lastFix_.clock < Undated || lastFix_.clock == last_.clock) lastFix_.clock += seconds;
  if (last_.clock < Undated) {
    for (Waiting& waiting : waiting_) waiting.clock += seconds;
    for (std::size_t i = undatedFrom_; i < soundings_.size(); ++i) {
      if (double& time = soundings_[i].time; time < Undated) time = KeptSeconds(time + seconds);
    }
    undatedFrom_ = soundings_.size();
  }
  last_.clock += seconds;
}

void NmeaTrack::LeaveUndated() {
  for (std::size_t i = undatedFrom_; i < soundings_.size(); ++i) {
    if (double& time = soundings_[i].time; time < Undated) time = Unknown;
  }
  undatedFrom_ = soundings_.size();
}

void NmeaTrack::Finish() {
  GiveUp();
  LeaveUndated();
  soundings_.Finish();
}

}  // namespace sondrix
