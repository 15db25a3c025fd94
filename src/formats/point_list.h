#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// Rows of the point lists, CR LF, at the end of body; the texts stand in the row as they are.
void AppendDepthRow(std::string& body, std::string_view latitude, std::string_view longitude,
                    std::string_view depth);
// Longitude first, and the depth as a negative height.
void AppendHeightRow(std::string& body, std::string_view latitude, std::string_view longitude,
                     std::string_view depth);

// Why a line of a source is in the list of bad lines.
struct BadLine {
  std::string_view reason;
  std::string_view value;   // behind the reason, or nothing
  std::string_view inLine;  // the words in front of the line's number
  std::int64_t line = 0;    // counted from 0
};

// Adds the report, CR LF, at the end of body.
void AppendBadLine(std::string& body, const BadLine& bad);

}  // namespace sondrix
