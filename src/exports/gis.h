#pragma once

#include "chart/shore.h"
#include "chart/transform.h"

#include <functional>
#include <string>

namespace sondrix {

struct ChartData;
struct ExportRun;
struct PlaneBox;
struct Survey;

// What stands on GDAL and PROJ, which take longer to load than a recording to read: a module of its own,
// which the program loads when it is asked for. The version comes first, so that a module of another one is
// known before the rest of its record is looked at. Files are made at a path where nothing stands.
struct Gis {
  const char* version;
  Transform (*toPlane)(const std::string& crs);    // of chart/projection
  Transform (*toDegrees)(const std::string& crs);  // the same
  void (*writeGeopackage)(const Survey& survey, const ChartData& chart, const ExportRun& run,
                          const std::string& path);
  void (*writeGeotiff)(const ChartData& chart, const ExportRun& run, const std::string& path);
  // Of exports/contour_files, as the next one.
  void (*writeContours)(const ChartData& chart, const ExportRun& run, const std::string& driver,
                        const std::string& path);
  std::string (*vectorDriverOf)(const std::string& path);
  Shore (*readShore)(const std::string& path, const std::string& crs, const PlaneBox& box,
                     const std::function<bool()>& isToEnd);  // of exports/shore_file
};

// The module's name, and that of its one function, which returns its Gis.
inline constexpr const char* GisModuleName = "sondrix-gis";
inline constexpr const char* GisFunctionName = "SondrixGis";

}  // namespace sondrix
