#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace sondrix {

// Of the letters A to Z; all else stays.
constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Without the blanks at both ends.
constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = " ") {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// A pattern with the values in place of "{0}", "{1}" to "{9}", in whatever order a language has them. No
// other braces.
std::string Filled(std::string_view pattern, std::initializer_list<std::string_view> values);

// The same at the end of a buffer.
void AppendFilled(std::string& out, std::string_view pattern, std::initializer_list<std::string_view> values);

}  // namespace sondrix
