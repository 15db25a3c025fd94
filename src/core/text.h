#pragma once

#include <string_view>

namespace sondrix {

// Of the letters A to Z; all else stays.
constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Without the blanks at both ends.
constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = " ") {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace sondrix
