#pragma once

#include "chart/transform.h"
#include "exports/export_run.h"

#include <cstdint>
#include <functional>

namespace sondrix {

// The soundings used, a line each: easting and northing with 2 decimals and depth with 3, metres, blanks
// between them. makeToPlane is called in each thread. Returns how many have no place in the projection and
// are left out. Faults as of the operating system, what makeToPlane throws, EndAsked.
std::uint64_t WriteXyz(const Survey& survey, const ExportRun& run,
                       const std::function<Transform()>& makeToPlane, OutputFile& file);

}  // namespace sondrix
