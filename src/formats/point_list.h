#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

struct Point;

// Point lists and lists of bad lines: 8-bit bytes of the code page, as the texts handed in are already, with
// CR LF lines, at the end of body.

// Latitude, longitude, depth.
void AppendDepthRow(std::string& body, const Point& point);
// Longitude, latitude, and the depth as a negative height.
void AppendHeightRow(std::string& body, const Point& point);

// Why a line of a source is in the list of bad lines.
struct BadLine {
  std::string_view reason;
  std::string_view value;   // behind the reason, or nothing
  std::string_view inLine;  // the words in front of the line's number
  std::int64_t line = 0;    // counted from 0
};

void AppendBadLine(std::string& body, const BadLine& bad);

}  // namespace sondrix
