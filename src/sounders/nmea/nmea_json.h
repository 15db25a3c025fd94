#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// The sentences in the texts of a JSON object, as a logger's lines: each behind what the object's other texts
// and numbers say, such as the time, separated by blanks. None where there is no sentence, and where the line
// is no JSON, or longer than 64 KiB. What stands behind the object is passed over.
std::vector<std::string> JsonLogLines(std::string_view json);

}  // namespace sondrix
