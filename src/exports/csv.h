#pragma once

#include "exports/export_run.h"

namespace sondrix {

// Every sounding of any fate, a row each, in the order of the sources: latitude, longitude (degrees, 8
// decimals), depth (metres, corrected), time (seconds since 1970 UTC), trip, recorded (metres), fate. Empty
// where nothing is stored; UTF-8, ended by LF. Faults as of the operating system, EndAsked.
void WriteCsv(const Survey& survey, const ExportRun& run, OutputFile& file);

}  // namespace sondrix
