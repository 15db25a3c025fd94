#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

enum class TableEncoding : std::uint8_t { Bytes, Utf16Little, Utf16Big };

// More columns than any table of soundings has; those behind aren't looked at.
inline constexpr std::size_t MaxColumns = 5000;

// How the lines of a text become the cells of a table, found from its start.
struct TableShape {
  TableEncoding encoding = TableEncoding::Bytes;
  char separator = ',';
  std::size_t columns = 0;        // that most rows have
  std::size_t lines = 0;          // looked at, without blank lines and comments
  std::size_t fitting = 0;        // of them rows of values in so many columns
  std::vector<std::string> head;  // names of columns, UTF-8; empty where there are none
  std::string headLine;           // as it stands, in UTF-8 or an 8-bit code page; also of one without use
  std::vector<std::string> rows;  // fitting ones, some hundreds
};

// Of the start of a text; isWhole: the text ends there, else its last line may be cut.
TableShape ShapeOf(std::string_view start, bool isWhole);

// By the first bytes, and how many of them are the mark of it.
struct EncodingFound {
  TableEncoding encoding = TableEncoding::Bytes;
  std::size_t markBytes = 0;
};
EncodingFound EncodingOf(std::string_view start);

// A line of a UTF-16 text that was split at bytes, as UTF-8: what the line end left of its other byte goes.
void DecodeLine(std::string_view bytes, TableEncoding encoding, std::string& utf8);

// Whether a line is a comment in a table with that separator.
bool IsComment(std::string_view line, char separator);

// "comma", "tab" and so on.
std::string_view NameOfSeparator(char separator);

}  // namespace sondrix
