#pragma once

#include "core/date_time.h"

#include <string_view>

namespace sondrix {

// A depth at a place, as a job gives it out.
struct Point {
  double Latitude = 0, Longitude = 0;  // degrees
  float Depth = 0;                     // metres
  float Feet = 0;                      // the depth as the source has it, without a correction
  DateSeconds Time = 0;
  int Segment = 0;   // 1 starts a segment of the track, 0 goes on with it
  bool Gap = false;  // the way since the point before is longer than the limit
  // Latitude, longitude and depth as outputs spell them, in ASCII or as the source does; these live
  // elsewhere.
  std::string_view LatText, LonText, DepthText;
};

}  // namespace sondrix
