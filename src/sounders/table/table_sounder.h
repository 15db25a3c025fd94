#pragma once

#include "sounders/common/reading.h"

#include <string_view>

namespace sondrix {

// Tables of soundings as text: any separator, names or none, positions in degrees of many spellings, depths,
// times. Rows of which most hold values; no sentences of a log, no markup.
bool IsTable(const SourceHead& head);

// As SounderFormat has it. Of several channels one is read; our own table is split by its trips.
void ReadTable(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading);

}  // namespace sondrix
