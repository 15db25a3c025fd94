#pragma once

#include "jobs/text_body.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace sondrix {

struct Point;
struct Run;

// The outputs that the jobs for tables and for logs both make.
struct PointBodies {
  TextBody mp, plt;
  std::string text;  // buffer
};

// Adds a point to both and, with ViewOzi set, to the live track. line is its number in the source, feetLength
// how long the text of its feet gets at most.
void WritePoint(Run& run, PointBodies& bodies, const Point& point, std::int64_t line,
                std::size_t feetLength = std::string::npos);

}  // namespace sondrix
