#pragma once

#include "core/run_result.h"

namespace sondrix {

struct Run;

// The job for polish MP maps: the vertices of all labelled polylines of Settings.Source go into a point list
// beside it, latitude, longitude and label as they stand in the map. Reports in the log line; the list is
// deleted again if no polyline came into it.
RunResult JobMp(Run& run);

}  // namespace sondrix
