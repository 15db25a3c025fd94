#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// For the sources of this system: its texts are wide.
namespace sondrix {

inline std::filesystem::path WidePath(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

// Half of a pair of surrogates, as a file's name may hold it, becomes the replacement character.
std::string Utf8Of(std::wstring_view text);

}  // namespace sondrix
