#pragma once

#include "exports/chart_data.h"
#include "exports/export_run.h"

#include <string>

namespace sondrix {

// The name of GDAL's driver that makes vector files of a path's ending; empty where there is none. The
// endings of export_formats.h go before it.
std::string VectorDriverOf(const std::string& path);

// The contours as GDAL's driver of that name makes them, at a path where nothing stands, with their
// companions beside it: lines with depth (metres) and index (whether it is drawn heavier), in the chart's
// projection or, where the kind of file has one of its own, in that. A kind that keeps no fields gets the
// depth as height. Faults as of the operating system, CantExport with what GDAL says, EndAsked.
void WriteContours(const ChartData& chart, const ExportRun& run, const std::string& driver,
                   const std::string& path);

}  // namespace sondrix
