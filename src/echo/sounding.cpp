#include "echo/sounding.h"

#include "core/settings.h"
#include "formats/sounding_line.h"
#include "geo/utm.h"

namespace sondrix {

void AddSounding(const Settings& settings, double latitude, double longitude, std::string_view depth,
                 std::string_view stamp, std::string& csv) {
  if (settings.UseUTM) {
    const UtmPosition utm = Ll2Utm(latitude, longitude);
    AppendSoundingLine(csv, utm.Easting, utm.Northing, depth, stamp);
  } else {
    AppendSoundingLine(csv, latitude, longitude, depth, stamp);
  }
}

}  // namespace sondrix
