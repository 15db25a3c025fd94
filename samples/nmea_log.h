#pragma once

#include <cstdint>
#include <string>

namespace sondrix {

// What a logger on the bus of a boat writes, once a second: position and depth among other sentences, with
// checksums and CR LF. In it: a start without a position, few satellites, a lost fix, sentences without a
// depth, a depth of 0, gaps of a logger that was off.
std::string NmeaLog();

// The same of at most so many bytes. False when it can't be written.
bool WriteNmeaLog(const std::string& path, std::int64_t bytes);

}  // namespace sondrix
