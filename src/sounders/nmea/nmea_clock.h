#pragma once

namespace sondrix {

// The times of day that a GPS tells, as a clock that goes on over midnight. Until it is told a date it counts
// from NmeaTrack::UndatedDay.
class NmeaClock {
 public:
  NmeaClock();
  // Seconds of a day to seconds of the clock. A leap of more than twelve hours is a midnight between.
  double At(double ofDay);
  // The date at a time of day, in days since 1970. Returns how many seconds later the clock goes with it.
  double SetDay(double ofDay, int day);
  bool IsDated() const;

 private:
  int day_;
  double ofDay_;
};

}  // namespace sondrix
