#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// In what the heads of a point file differ.
struct MpHeadForm {
  std::string_view typeSet;  // a line of the head with its line end, or nothing
  std::string_view level0, level1;
};
extern const MpHeadForm CsvMpHead;
extern const MpHeadForm LogMpHead;

// A depth on the map; the texts stand in the record as they are: metres and degrees.
struct MpPoint {
  std::string_view depth, latitude, longitude;
};

// The head of a polish point file, CR LF lines.
std::string MpHead(const MpHeadForm& form, std::string_view name);

// Adds the record of a point of that type at the end of body.
void AppendMpPoint(std::string& body, std::string_view type, const MpPoint& point);

// Adds the record of a point behind a gap: of a fixed type, with the number of the source's line in its
// label.
void AppendMpBreak(std::string& body, const MpPoint& point, std::int64_t line);

}  // namespace sondrix
