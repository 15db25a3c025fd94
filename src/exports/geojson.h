#pragma once

#include "chart/transform.h"
#include "exports/chart_data.h"
#include "exports/export_run.h"

#include <functional>

namespace sondrix {

class OutputFile;

// The contours as GeoJSON (RFC 7946): longitude and latitude with 8 decimals (WGS 84), a line each with the
// properties depth (metres) and index; one that crosses 180 degrees is cut there. makeToDegrees is called in
// each thread. Faults as of the operating system, what makeToDegrees throws, CantExport, EndAsked.
void WriteGeoJson(const ChartData& chart, const ExportRun& run,
                  const std::function<Transform()>& makeToDegrees, OutputFile& file);

}  // namespace sondrix
