#pragma once

#include "sounders/common/reading.h"

#include <string_view>

namespace sondrix {

// A log with sentences of NMEA 0183 in its lines, whatever stands around them.
bool IsNmeaLog(const SourceHead& head);

// As SounderFormat::read. The source is read twice: what it holds decides which of the sentences that tell
// the same are taken, of the whole log.
void ReadNmeaLog(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading);

}  // namespace sondrix
