#pragma once

#include <optional>
#include <string_view>

namespace sondrix {

// When a recording began by its file's name, as recorders give it: "Sonar_2021-06-05_10.11.12.sl3". Seconds
// since 1970 by the clock of the place, which the name doesn't tell. None for a name without date and time.
std::optional<double> DateOfName(std::string_view name);

}  // namespace sondrix
