#pragma once

#include "core/sounding_list.h"
#include "sounders/nmea/nmea_prefix.h"

#include <cstddef>
#include <vector>

namespace sondrix {

// A moment that the GPS tells of, and where the boat is then.
struct NmeaEpoch {
  double clock = Unknown;  // seconds
  bool isTime = false;     // clock counts from 1970 UTC, or from UndatedDay; else from anywhere
  LoggerTime logged;
  double longitude = Unknown, latitude = Unknown;  // degrees; not a number: no fix

  bool HasPosition() const { return latitude == latitude; }
};

// Places the depths of a log between its fixes. Depth sentences have no time of their own: they get one
// between the epochs around them, by the logger's clock where it tells single lines apart, else spread evenly
// in their order. The position is interpolated between two fixes at most FixGap apart, else it stays unknown.
// Soundings wait for the next fix only.
class NmeaTrack {
 public:
  static constexpr double FixGap = 5;  // seconds
  // Until the date is known, times count from this day, which no log has; days since 1970.
  static constexpr int UndatedDay = -1'000'000;

  explicit NmeaTrack(SoundingList& soundings) : soundings_(soundings) {}

  void AddDepth(double metres, const LoggerTime& logged);
  // One with a position of its own, degrees.
  void AddPlaced(double metres, double longitude, double latitude);
  // One at or before the last epoch's clock is a jump of the clock: nothing is placed across it.
  void AddEpoch(const NmeaEpoch& epoch);
  // The last epoch at the same moment tells its position later, or better.
  void MoveLastEpoch(double longitude, double latitude);
  // The last epoch is that many seconds later than it said; with it all that is undated, as far as the clock
  // has not jumped between.
  void ShiftLastEpoch(double seconds);
  // No more comes: what isn't placed or dated stays so.
  void Finish();
  bool HasPlaced() const { return hasPlaced_; }  // any depth between fixes

 private:
  struct Waiting {
    double metres, clock;
    LoggerTime logged;
  };
  void SpreadUpTo(const NmeaEpoch& epoch);
  void PlaceUpTo(const NmeaEpoch& fix);
  void GiveUp();
  void Add(const Waiting& waiting, double longitude, double latitude);
  void LeaveUndated();

  SoundingList& soundings_;
  std::vector<Waiting> waiting_;
  std::size_t spread_ = 0;  // of those waiting, how many have their clock
  NmeaEpoch last_, lastFix_;
  bool hasPlaced_ = false;
  bool isTime_ = false;  // of the clocks of those that wait
  std::size_t undatedFrom_ = 0;
};

}  // namespace sondrix
