#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

struct Point;

// Track files: 8-bit bytes of the code page, as the texts handed in are already, with CR LF lines.

// The six head lines.
std::string PltHead(std::string_view trackName, std::int64_t pointCount);

// Of the feet's text: 1234.567 gives "1234.".
inline constexpr std::size_t ShortFeet = 5;

// Adds the line of a point at the end of body; its feet stand as a negative altitude of so many characters at
// most.
void AppendPltPoint(std::string& body, const Point& point, std::size_t feetLength = std::string::npos);

}  // namespace sondrix
