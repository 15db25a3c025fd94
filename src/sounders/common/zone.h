#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace sondrix {

// From the local time of a zone, in seconds since 1970 as its clocks show them, to seconds since 1970 UTC.
using ToUtc = std::function<double(double seconds)>;

// By an offset from UTC, as "Z", "+2", "+02:00", "-0330" or "UTC+2", or by a name of the time zone database,
// as "Europe/Berlin". Of an hour that clocks show twice it is the first; one that they leave out counts on
// from before. None where there is no such zone.
std::optional<ToUtc> ZoneOf(std::string_view text);

// Seconds ahead of UTC of an offset, as "Z", "UTC", "+2" or "-03:30".
std::optional<double> OffsetOf(std::string_view text);

}  // namespace sondrix
