#pragma once

#include "exports/chart_data.h"
#include "exports/export_run.h"

#include <string>

namespace sondrix {

// A GeoPackage, made at a path where nothing stands: the layer soundings has all of them as points with the
// columns of the .csv, the layer tracks the lines of those used, by trip, both in degrees (WGS 84). Where
// there is a chart, contours (depth, index) and areas (depth_min, depth_max) in its projection, in which
// alone they are sure not to cross. Each layer has an index of places and a style for QGIS. Faults as of the
// operating system, CantExport with what GDAL says, EndAsked.
void WriteGeopackage(const Survey& survey, const ChartData& chart, const ExportRun& run,
                     const std::string& path);

}  // namespace sondrix
