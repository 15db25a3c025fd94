#include "sounders/table/table_cells.h"

#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sondrix {
namespace {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// What stands between cells at a place: a separator, or a run of blanks.
bool EndsCell(char c, char separator) { return separator == Blanks ? IsBlank(c) : c == separator; }

// Behind the closing quote of a cell, none where it doesn't end with one.
std::size_t ClosingQuote(std::string_view line, std::size_t from, char separator) {
  for (std::size_t at = line.find('"', from); at != std::string_view::npos; at = line.find('"', at)) {
    if (at + 1 < line.size() && line[at + 1] == '"') {
      at += 2;
      continue;
    }
    std::size_t behind = at + 1;
    while (separator != Blanks && behind < line.size() && line[behind] == ' ') ++behind;
    if (behind == line.size() || EndsCell(line[behind], separator)) return at;
    return std::string_view::npos;
  }
  return std::string_view::npos;
}

std::size_t EndOfCell(std::string_view line, std::size_t from, char separator) {
  if (separator != Blanks) return std::min(line.find(separator, from), line.size());
  return std::min(line.find_first_of(" \t", from), line.size());
}

// Three digits behind it, and no fourth.
bool IsThousandsMark(std::string_view cell, std::size_t at) {
  const std::string_view behind = cell.substr(at + 1);
  return std::min(behind.find_first_not_of("0123456789"), behind.size()) == 3;
}

bool SameText(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() &&
         std::equal(text.begin(), text.end(), lower.begin(), [](char a, char b) { return Lower(a) == b; });
}

}  // namespace

std::string_view TrimmedCell(std::string_view text) {
  for (;;) {
    if (!text.empty() && IsBlank(text.front())) {
      text.remove_prefix(1);
    } else if (!text.empty() && IsBlank(text.back())) {
      text.remove_suffix(1);
    } else if (text.starts_with("\xC2\xA0")) {
      text.remove_prefix(2);
    } else if (text.ends_with("\xC2\xA0")) {
      text.remove_suffix(2);
    } else {
      return text;
    }
  }
}

bool SplitRow(std::string_view line, char separator, std::vector<std::string_view>& cells,
              std::size_t limit) {
  cells.clear();
  std::size_t at = 0;
  if (separator == Blanks) {
    line = TrimmedCell(line);
    if (line.empty()) return true;
  }
  while (cells.size() < limit) {
    std::size_t begin = at;
    while (begin < line.size() && IsBlank(line[begin]) && line[begin] != separator) ++begin;
    std::size_t end = std::string_view::npos;
    if (begin < line.size() && line[begin] == '"') {
      end = ClosingQuote(line, begin + 1, separator);
      if (end != std::string_view::npos) {
        cells.push_back(line.substr(begin + 1, end - begin - 1));
        end = EndOfCell(line, end + 1, separator);
      }
    }
    if (end == std::string_view::npos) {
      end = EndOfCell(line, begin, separator);
      cells.push_back(TrimmedCell(line.substr(begin, end - begin)));
    }
    if (end == line.size()) return true;
    at = end + 1;
    if (separator == Blanks) at = line.find_first_not_of(" \t", at);
  }
  return false;
}

std::string Unquoted(std::string_view cell) {
  std::string text;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    text += cell[i];
    if (cell[i] == '"' && i + 1 < cell.size() && cell[i + 1] == '"') ++i;
  }
  return text;
}

bool IsMissing(std::string_view cell) {
  static constexpr std::string_view texts[] = {"-",    "nan",  "null", "none", "--", "n/a", "na",
                                               "#n/a", "-nan", "nil",  "---",  "*",  "?"};
  if (cell.empty()) return true;
  if (cell.size() > 4) return false;
  return std::any_of(std::begin(texts), std::end(texts),
                     [&](std::string_view text) { return SameText(cell, text); });
}

std::optional<double> CellNumber(std::string_view cell) {
  double value = 0;
  if (ReadDecimal(cell.data(), cell.data() + cell.size(), value) == cell.data() + cell.size() &&
      !cell.empty())
    return value;
  if (cell.starts_with('+')) cell.remove_prefix(1);
  if (cell.empty() || cell.size() > 64) return std::nullopt;
  const std::size_t last = cell.find_last_of(".,");
  char plain[64];
  std::size_t length = 0, marks = 0, digits = 0;
  if (last != std::string_view::npos)
    marks = static_cast<std::size_t>(std::count(cell.begin(), cell.end(), cell[last]));
  for (std::size_t i = 0; i < cell.size(); ++i) {
    const char c = cell[i];
    if (c == '.' || c == ',') {
      if (i == last && marks == 1) {
        plain[length++] = '.';
      } else if (!IsThousandsMark(cell, i)) {
        return std::nullopt;
      }
      continue;
    }
    const bool isDigit = c >= '0' && c <= '9';
    const bool isExponent = digits > 0 && (c == 'e' || c == 'E');
    const bool isSign = (c == '-' || c == '+') && (i == 0 || cell[i - 1] == 'e' || cell[i - 1] == 'E');
    if (!isDigit && !isExponent && !isSign) return std::nullopt;
    digits += isDigit ? 1 : 0;
    plain[length++] = c;
  }
  if (digits == 0) return std::nullopt;
  // A number beyond the range of a 64-bit float is none of a sounding.
  const auto [end, error] = std::from_chars(plain, plain + length, value);
  if (error != std::errc{} || end != plain + length || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace sondrix
