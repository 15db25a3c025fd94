#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What the texts behind options mean. A number has a period and may have a sign and an exponent; none where
// there is another text, or where it isn't finite.

std::vector<std::string_view> SplitAtCommas(std::string_view text);  // without blanks around the parts

std::optional<double> NumberIn(std::string_view text);

// Centimetres, at most a kilometre of them to either side, as metres.
std::optional<double> CentimetresIn(std::string_view text);

// Metres above 0, from a millimetre to 1000 km.
std::optional<double> LengthIn(std::string_view text);

// "EPSG:n" in capitals; empty where it isn't that.
std::string EpsgCode(std::string_view text);

// Depths above 0 to 20 km, as "1,2,3,5.5", each deeper than the one before; empty where it isn't that.
std::vector<double> DepthsIn(std::string_view text);

}  // namespace sondrix
