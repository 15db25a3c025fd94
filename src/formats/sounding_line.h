#pragma once

#include <string>
#include <string_view>

namespace sondrix {

// Adds a line of an echogram's table at the end of csv, ASCII with CR LF: first coordinate, second
// coordinate, depth, time stamp. The coordinates are degrees or metres and stand as NumText. A depth text
// that begins with its period gets a zero before it.
void AppendSoundingLine(std::string& csv, double first, double second, std::string_view depth,
                        std::string_view stamp);

}  // namespace sondrix
