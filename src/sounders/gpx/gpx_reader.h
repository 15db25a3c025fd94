#pragma once

#include "sounders/common/reading.h"

#include <string_view>

namespace sondrix {

bool IsGpx(const SourceHead& head);

// As SounderFormat::read. A sounding is a point, of a track, a route or alone, with an element named depth
// below it, of whatever name space. Where the XML is damaged, reading goes on at the next point.
void ReadGpx(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading);

}  // namespace sondrix
