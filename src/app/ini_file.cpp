#include "app/ini_file.h"

#include <algorithm>

#include "core/code_page.h"
#include "core/fault.h"
#include "core/files.h"

namespace sondrix {
namespace {

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view ValueIn(std::string_view text, std::string_view section, std::string_view key) {
  bool inSection = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));

    if (line.starts_with('[')) {
      if (inSection) return {};
      inSection = SameName(Trimmed(line.substr(1, line.find(']') - 1)), section);
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inSection || line.starts_with(';') || equals == std::string_view::npos) continue;
    if (SameName(Trimmed(line.substr(0, equals)), key)) return Unquoted(Trimmed(line.substr(equals + 1)));
  }
  return {};
}

}  // namespace

std::string IRead(std::string_view file, std::string_view section, std::string_view key) {
  try {
    const std::string text = ReadWhole(file);
    return FromCodePage(ValueIn(text, section, key).substr(0, MaxIniValue));
  } catch (const Fault&) {
    return {};
  }
}

}  // namespace sondrix
