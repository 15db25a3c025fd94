#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What a table's cells are made of. A cell is a piece of its line without quotes and outer blanks.

// Between blanks, runs of blanks and tabs count as one.
inline constexpr char Blanks = ' ';

// The cells of a line, at most so many. Quotes count where they open a cell and the closing one ends it;
// elsewhere they are part of the text. Returns whether the line has no more.
bool SplitRow(std::string_view line, char separator, std::vector<std::string_view>& cells, std::size_t limit);

// Without blanks, tabs and no-break spaces at both ends.
std::string_view TrimmedCell(std::string_view text);

// The text of a quoted cell, in which a quote stands twice.
std::string Unquoted(std::string_view cell);

// Whether it is one of the texts for a value that is missing: nothing, "-", "NaN", "null" and the like.
bool IsMissing(std::string_view cell);

// A number with a point or a comma as decimal mark; where both stand, or one of them several times, the last
// kind is the decimal mark and the other parts thousands. An exponent may follow.
std::optional<double> CellNumber(std::string_view cell);

// Reads a plain decimal whose digits make a whole number up to 2^53, with a point or that mark: its digits as
// a whole number divided by a power of ten that is exact, so that the one rounding gives the nearest number
// (W. D. Clinger, "How to read floating point numbers accurately", 1990). Returns where it ends; null where
// it is none of these.
inline const char* ReadDecimal(const char* at, const char* end, double& value, char mark = '.') {
  static constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                      1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
  const bool isNegative = at != end && *at == '-';
  if (isNegative) ++at;
  std::uint64_t mantissa = 0;
  const char* const first = at;
  while (at != end && static_cast<unsigned char>(*at - '0') < 10)
    mantissa = mantissa * 10 + static_cast<unsigned char>(*at++ - '0');
  std::ptrdiff_t digits = at - first, decimals = 0;
  if (at != end && (*at == '.' || *at == mark)) {
    const char* const behind = ++at;
    while (at != end && static_cast<unsigned char>(*at - '0') < 10)
      mantissa = mantissa * 10 + static_cast<unsigned char>(*at++ - '0');
    decimals = at - behind;
    digits += decimals;
  }
  if (digits == 0 || digits > 18 || mantissa > (std::uint64_t{1} << 53)) return nullptr;
  value = static_cast<double>(mantissa) / powers[decimals];
  if (isNegative) value = -value;
  return at;
}

}  // namespace sondrix
