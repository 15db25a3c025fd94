#include "survey/levels/level_series.h"

#include "core/sounding.h"

#include <algorithm>
#include <utility>

namespace sondrix {
namespace {

constexpr double LeastGap = 3 * 3600;  // seconds
constexpr double GapOfStep = 3;

}  // namespace

LevelSeries::LevelSeries(std::vector<LevelReading> readings) : readings_(std::move(readings)) {
  std::stable_sort(readings_.begin(), readings_.end(),
                   [](const LevelReading& a, const LevelReading& b) { return a.time < b.time; });
  // The last of those at one time moves to their front.
  std::size_t kept = 0;
  for (std::size_t i = 0; i < readings_.size(); ++i) {
    if (kept > 0 && readings_[kept - 1].time == readings_[i].time) --kept;
    readings_[kept++] = readings_[i];
  }
  readings_.resize(kept);
  std::vector<double> steps;
  for (std::size_t i = 1; i < readings_.size(); ++i) {
    steps.push_back(readings_[i].time - readings_[i - 1].time);
  }
  longestGap_ = LeastGap;
  if (steps.empty()) return;
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  longestGap_ = std::max(LeastGap, GapOfStep * *middle);
}

double LevelSeries::At(double time) const {
  const auto behind =
      std::lower_bound(readings_.begin(), readings_.end(), time,
                       [](const LevelReading& reading, double t) { return reading.time < t; });
  if (behind == readings_.end()) return Unknown;  // also of a time that isn't known
  if (behind->time == time) return behind->level;
  if (behind == readings_.begin()) return Unknown;
  const LevelReading& before = *std::prev(behind);
  const double gap = behind->time - before.time;
  if (gap > longestGap_) return Unknown;
  return before.level + (behind->level - before.level) * (time - before.time) / gap;
}

}  // namespace sondrix
