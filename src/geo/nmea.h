#pragma once

#include <string_view>

namespace sondrix {

// A coordinate field of an NMEA 0183 sentence as unsigned degrees: ddmm.mmmm by its length of 9, dddmm.mmmm
// by 10; any other length gives 0. Fault 5 where no period stands behind at least two characters, fault 6
// where the degrees don't fit a 32-bit float.
double Nmea2Deg(std::string_view text);

}  // namespace sondrix
