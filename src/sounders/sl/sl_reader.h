#pragma once

#include "sounders/common/reading.h"

#include <string_view>

namespace sondrix {

// Recordings in the formats SL2 and SL3 (see sl_format.h), format words that aren't SL2's being of the other.
bool IsSl2(const SourceHead& head);
bool IsSl3(const SourceHead& head);

// The frames of one channel as soundings, in their order. Auto takes the channel with most frames that carry
// a depth; of equals Primary, then Downscan. A frame without a depth gives a sounding with none. Positions
// are those of the mended track (see SlTrack); where a recording tells no date its times are unknown.
// CantRead without a sound frame, or without one of the channel that was asked for.
void ReadSl(std::string_view path, const ReadOptions& options, const ReadWatch& watch, Reading& reading);

}  // namespace sondrix
