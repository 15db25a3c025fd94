#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace sondrix {

// Cuts one to `most` digits off the start of a text; none where fewer than `least` stand there.
std::optional<int> TakeDigits(std::string_view& text, std::size_t least, std::size_t most);
// Cuts one of these characters off the start of a text.
bool TakeOneOf(std::string_view& text, std::string_view characters);

// A time of day at the start of a text, "hh:mm:ss" with or without decimals, which is cut off.
struct TimeOfDay {
  double seconds = 0;
  bool hasDecimals = false;
};
std::optional<TimeOfDay> TakeTimeOfDay(std::string_view& text);

// A date and time in ISO 8601's extended form at the start of a text, which is cut off:
// "2024-05-01T10:00:00", with or without decimals and zone. Slashes may stand in the date, blanks or a
// separator of columns before the time; the seconds may miss.
struct IsoTime {
  double seconds = 0;  // since 1970, in UTC where it has a zone
  bool hasZone = false;
  bool hasDecimals = false;
};
std::optional<IsoTime> TakeIsoTime(std::string_view& text);

}  // namespace sondrix
