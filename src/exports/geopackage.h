#pragma once

#include "exports/export_run.h"

#include <string>

namespace sondrix {

// A GeoPackage of WGS 84, made at a path where nothing stands: the layer soundings has all of them as points
// with the columns of the .csv, the layer tracks the lines of those used, by trip. date: what the file says
// of its last change, seconds since 1970. CantExport with what GDAL says, EndAsked.
void WriteGeopackage(const Survey& survey, const ExportRun& run, double date, const std::string& path);

}  // namespace sondrix
