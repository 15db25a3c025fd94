#include "sounders/nmea/nmea_clock.h"

#include "core/sounding.h"
#include "sounders/common/calendar.h"
#include "sounders/nmea/nmea_track.h"

namespace sondrix {

namespace {

constexpr double HalfDay = SecondsOfDay / 2;

}  // namespace

NmeaClock::NmeaClock() : day_(NmeaTrack::UndatedDay), ofDay_(Unknown) {}

double NmeaClock::At(double ofDay) {
  if (ofDay < ofDay_ - HalfDay) ++day_;
  if (ofDay > ofDay_ + HalfDay) --day_;
  ofDay_ = ofDay;
  return day_ * SecondsOfDay + ofDay;
}

double NmeaClock::SetDay(double ofDay, int day) {
  const double before = At(ofDay);
  day_ = day;
  return At(ofDay) - before;
}

bool NmeaClock::IsDated() const { return day_ > NmeaTrack::UndatedDay / 2; }

}  // namespace sondrix
