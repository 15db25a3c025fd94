#pragma once

#include "core/date_time.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// A point of a track file; the texts stand in the line as they are.
struct PltPoint {
  std::string_view latitude, longitude;  // degrees
  int segmentCode = 0;                   // 1 opens a segment
  std::string_view feet;                 // depth, written as a negative altitude
  DateSeconds time = 0;
};

// The six head lines of a track file, CR LF.
std::string PltHead(std::string_view trackName, std::int64_t pointCount);

// Adds one CR LF line at the end of body.
void AppendPltPoint(std::string& body, const PltPoint& point);

// The first five characters of the depth's text: 1234.567 gives "1234.".
std::string ShortFeet(float feet);

}  // namespace sondrix
