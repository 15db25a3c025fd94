#pragma once

#include <string>
#include <string_view>

namespace sondrix {

struct Settings;

// Adds the line of a sounding to the CSV of an echogram: latitude and longitude in degrees, or easting and
// northing with UseUTM set, depth in metres as text, and the frame's stamp. Fault 6 where UTM has no value,
// with nothing added.
void AddSounding(const Settings& settings, double latitude, double longitude, std::string_view depth,
                 std::string_view stamp, std::string& csv);

}  // namespace sondrix
