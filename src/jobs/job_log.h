#pragma once

#include "core/run_result.h"

namespace sondrix {

struct Run;

// The job for NMEA 0183 logs: pairs each $GPGGA with the next $SDDBT, thins the soundings of Settings.Source
// to the points of a chart, and writes them under the target's name as ".drd.txt", ".srf.txt", ".plt" and
// ".mp", and the lines worth a report as ".bad.txt". Reports in the log line; a fault or a stop ends it with
// no file written.
RunResult JobLog(Run& run);

}  // namespace sondrix
