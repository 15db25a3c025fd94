#pragma once

#include "chart/transform.h"

#include <string>

namespace sondrix {

struct ExportRun;
struct Survey;

// What stands on GDAL and PROJ, which take longer to load than a recording to read: a module of its own,
// which the program loads when it is asked for. The version comes first, so that a module of another one is
// known before the rest of its record is looked at.
struct Gis {
  const char* version;
  Transform (*toPlane)(const std::string& crs);    // of chart/projection
  Transform (*toDegrees)(const std::string& crs);  // the same
  void (*writeGeopackage)(const Survey& survey, const ExportRun& run, double date, const std::string& path);
};

// The module's name, and that of its one function, which returns its Gis.
inline constexpr const char* GisModuleName = "sondrix-gis";
inline constexpr const char* GisFunctionName = "SondrixGis";

}  // namespace sondrix
