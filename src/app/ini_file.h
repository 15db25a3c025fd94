#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

inline constexpr std::string_view IniSection = "Main";
inline constexpr std::size_t MaxIniValue = 255;  // characters; a longer value is cut on reading

inline constexpr std::uintmax_t MaxIniLength = 1 << 20;  // bytes; a larger file counts as unreadable

// The value of a key in the first section of that name, as UTF-8; names are compared without case, blanks
// around a value and one pair of quotes around it are dropped. Empty if the key is missing or the file is
// unreadable.
std::string IRead(std::string_view file, std::string_view section, std::string_view key);
// The same, none if the key is missing.
std::optional<std::string> IFind(std::string_view file, std::string_view section, std::string_view key);

struct IniValue {
  std::string_view key;
  std::string value;  // UTF-8
};

// Replaces or adds the values of a section; a missing section or file is made. All else in the file, its
// order included, stays as it was. The file is replaced as a whole: on a fault the old one stays and the
// result is false. A file with a letter that the code page lacks is UTF-8 and begins with a byte order mark.
bool IWriteAll(std::string_view file, std::string_view section, std::span<const IniValue> values);
bool IWrite(std::string_view file, std::string_view section, std::string_view key, std::string_view value);

}  // namespace sondrix
