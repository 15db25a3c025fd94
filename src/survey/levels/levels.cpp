#include "survey/levels/levels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace sondrix {
namespace {

// A tide is worked out at whole minutes and taken as straight between them: within 5 micrometres of one of
// half a metre.
constexpr double TideStep = 60;

// The levels of one trip from sounding to sounding.
class LevelWalk {
 public:
  LevelWalk(const Levels& levels, std::uint32_t trip) : levels_(&levels), trip_(trip) {}

  // Of the next sounding; of one without a time it is that before it, or the trip's first.
  double Next(const Sounding& sounding, const SoundingList& soundings) {
    if (sounding.HasTime()) {
      time_ = sounding.time;
    } else if (std::isnan(time_)) {
      time_ = FirstTime(soundings);
    }
    const Levels::TripLevel& level = levels_->trips[trip_];
    double above = level.constant - levels_->zero + CourseAt(level.course, time_);
    if (!levels_->tide.empty()) above += Tide();
    if (!levels_->gauge.Readings().empty()) above += levels_->gaugeScale * levels_->gauge.At(time_);
    return above;
  }

 private:
  static double FirstTime(const SoundingList& soundings) {
    for (std::size_t i = 0; i < soundings.size(); ++i) {
      if (soundings[i].HasTime()) return soundings[i].time;
    }
    return Unknown;
  }

  double Tide() {
    const double minute = std::floor(time_ / TideStep);
    if (minute != minute_) {
      minute_ = minute;
      before_ = TideAt(levels_->tide, minute * TideStep);
      behind_ = TideAt(levels_->tide, (minute + 1) * TideStep);
    }
    return before_ + (behind_ - before_) * (time_ / TideStep - minute);
  }

  const Levels* levels_;
  std::uint32_t trip_;
  double time_ = Unknown;
  double minute_ = Unknown, before_ = 0, behind_ = 0;
};

}  // namespace

double TideAt(std::span<const Constituent> tide, double time) {
  double height = 0;
  for (const Constituent& part : tide) {
    const double angle = part.speed * (time - TideEpoch) / 3600 - part.phase;
    height += part.amplitude * std::cos(angle / 180 * std::numbers::pi);
  }
  return height;
}

double CourseAt(std::span<const LevelReading> course, double time) {
  if (course.empty() || std::isnan(time)) return 0;
  const auto behind =
      std::lower_bound(course.begin(), course.end(), time,
                       [](const LevelReading& reading, double t) { return reading.time < t; });
  if (behind == course.begin()) return behind->level;
  if (behind == course.end()) return course.back().level;
  const LevelReading& before = *std::prev(behind);
  return before.level + (behind->level - before.level) * (time - before.time) / (behind->time - before.time);
}

double Levels::Above(std::uint32_t trip, double time) const {
  const TripLevel& level = trips[trip];
  if (!level.isKnown) return Unknown;
  double above = level.constant - zero + CourseAt(level.course, time);
  if (!tide.empty()) above += TideAt(tide, time);
  if (!gauge.Readings().empty()) above += gaugeScale * gauge.At(time);
  return above;
}

double MeanLevel(const Survey& survey, const Levels& levels, std::span<const std::uint32_t> trips) {
  double sum = 0, count = 0;
  for (const std::uint32_t t : trips) {
    if (!levels.trips[t].isKnown) continue;
    const SoundingList& soundings = survey.trips[t].soundings;
    LevelWalk walk(levels, t);
    for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
      for (const Sounding& sounding : soundings.Block(b)) {
        if (sounding.fate != Fate::Used) continue;
        const double above = walk.Next(sounding, soundings);
        if (std::isnan(above)) continue;
        sum += above;
        ++count;
      }
    }
  }
  return count > 0 ? sum / count : 0;
}

std::uint64_t ApplyLevels(Survey& survey, const Levels& levels) {
  std::uint64_t dry = 0;
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    if (!levels.trips[t].isKnown) continue;
    SoundingList& soundings = survey.trips[t].soundings;
    LevelWalk walk(levels, t);
    for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
      for (Sounding& sounding : soundings.Block(b)) {
        const double above = walk.Next(sounding, soundings);
        if (!(sounding.depth > 0) || std::isnan(above)) continue;
        sounding.depth = KeptMetres(static_cast<double>(sounding.depth) - above);
        if (sounding.depth < 0 && sounding.fate == Fate::Used) ++dry;
      }
    }
  }
  return dry;
}

}  // namespace sondrix
