#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

struct Point;

// Polish point files: 8-bit bytes of the code page, as the texts handed in are already, with CR LF lines.

// In what the heads of a point file differ.
struct MpHeadForm {
  std::string_view typeSet;  // a line of the head with its line end, or nothing
  std::string_view level0, level1;
};
extern const MpHeadForm CsvMpHead;
extern const MpHeadForm LogMpHead;

// The head of a file of that name.
std::string MpHead(const MpHeadForm& form, std::string_view name);

// Adds the record of a point of that type at the end of body. One behind a gap has a fixed type and the
// number of the source's line in its label instead.
void AppendMpPoint(std::string& body, const Point& point, std::string_view type, std::int64_t line);

}  // namespace sondrix
