#pragma once

#include "exports/chart_data.h"
#include "exports/export_run.h"

#include <string>

namespace sondrix {

// A cloud optimized GeoTIFF of the model, made at a path where nothing stands: band 1 depth (or height), band
// 2 uncertainty, both in metres; not a number where the chart doesn't go. Beside it a passing file may grow,
// which is gone at the end unless something fails. Faults as of the operating system,
// CantExport with what GDAL says, EndAsked.
void WriteGeotiff(const ChartData& chart, const ExportRun& run, const std::string& path);

}  // namespace sondrix
