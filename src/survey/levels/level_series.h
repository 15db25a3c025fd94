#pragma once

#include <span>
#include <vector>

namespace sondrix {

// Readings of a gauge in the order of time.
struct LevelReading {
  double time = 0;   // seconds since 1970 UTC
  double level = 0;  // metres
};

class LevelSeries {
 public:
  LevelSeries() = default;
  // In any order; of several at one time the last one given holds.
  explicit LevelSeries(std::vector<LevelReading> readings);

  // Metres, linear between two readings; not a number before the first, behind the last, and between two that
  // are further apart than LongestGap.
  double At(double time) const;

  // Seconds that may lie between two readings: three times the median between readings, at least three hours
  // (within which a tide still runs nearly straight), so that a lake's daily or weekly readings are joined
  // too.
  double LongestGap() const { return longestGap_; }
  std::span<const LevelReading> Readings() const { return readings_; }

 private:
  std::vector<LevelReading> readings_;
  double longestGap_ = 0;
};

}  // namespace sondrix
