#pragma once

#include <cstdint>
#include <string>

namespace sondrix {

// A map of the lake in the polish MP format as a map editor saves it, with CR LF: the depth contours as
// labelled polylines, named places, the shore. In it: keys in other cases, a name in windows-1251, a polyline
// with a blank label, one with label 0, one with two data lines.
std::string PolishMap();

// The same lake beside itself again and again, at most so many bytes. False when it can't be written.
bool WritePolishMap(const std::string& path, std::int64_t bytes);

}  // namespace sondrix
