#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// The fields that NMEA sentences have in common.

namespace sondrix {

// hhmmss and ddmmyy of seconds since 1970.
void AddNmeaTime(std::string& text, std::int64_t time);
void AddNmeaDate(std::string& text, std::int64_t time);

// Degrees with so many digits and minutes with so many decimals, without a sign.
void AddNmeaAngle(std::string& text, double degrees, std::size_t digits, std::size_t decimals);

// Closes the sentence that begins at start by its checksum and CR LF.
void CloseNmea(std::string& text, std::size_t start);

}  // namespace sondrix
