#pragma once

#include <string>
#include <string_view>

namespace sondrix {

inline constexpr std::string_view IniSection = "Main";
inline constexpr std::size_t MaxIniValue = 255;  // characters; a longer value is cut on reading

// The value of a key in the first section of that name, as UTF-8; names are compared without case, blanks
// around a value and one pair of quotes around it are dropped. Empty if the key is missing or the file is
// unreadable.
std::string IRead(std::string_view file, std::string_view section, std::string_view key);

}  // namespace sondrix
