#pragma once

#include "exports/export_run.h"

namespace sondrix {

// The soundings used as tracks of GPX 1.1, a track for each trip and a segment for each line; the depth is in
// the track point extension. Times that aren't known are left out. Faults as of the operating system,
// EndAsked.
void WriteGpx(const Survey& survey, const ExportRun& run, OutputFile& file);

}  // namespace sondrix
