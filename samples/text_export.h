#pragma once

#include "samples/text_steps.h"

#include <cstdint>
#include <string>

namespace sondrix {

// A table of soundings as the sounder maker's programs export it: 14 columns, depth in feet, Mercator metres.
// In it: zero depths, rows that repeat a position, gaps of a paused recording, blank lines.
std::string TextExport(const TableForm& form);

// The same of at most so many bytes. False when it can't be written.
bool WriteTextExport(const std::string& path, const TableForm& form, std::int64_t bytes);

}  // namespace sondrix
