#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace sondrix {

// Which coordinate a hemisphere's letter says it is.
enum class Axis : std::uint8_t { Unsaid, Latitude, Longitude };

struct Angle {
  double degrees = 0;  // north and east positive
  Axis axis = Axis::Unsaid;
};

// A coordinate as text: degrees, or degrees and minutes, or these and seconds, each with or without its mark
// or between blanks or colons, with a hemisphere's letter before or behind it or a sign; also ddmm.mmmm with
// a letter. None for any other text, for minutes or seconds from 60 on and for more than 180 degrees.
std::optional<Angle> AngleOf(std::string_view text);

// Degrees of ddmm.mmmm; none where the minutes reach 60.
std::optional<double> DegreesOfNmea(double value);

// A cell of a letter alone: 1 for north and east, -1 for south and west, none for any other text.
std::optional<double> SignOfLetter(std::string_view cell);

}  // namespace sondrix
