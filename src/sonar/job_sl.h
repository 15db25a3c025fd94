#pragma once

#include "core/run_result.h"
#include "sonar/layout/sl_source.h"

namespace sondrix {

struct Run;

// The job for SL2 and SL3 sources: one pass over the frames of Settings.Source. For each frame of the
// selected channel a line goes into the CSV of the target, and the frame is shown, checked and cropped as the
// settings say. Reports in the log line; faults end the job through its closing. blockSize is how many bytes
// of the source are read at a time.
RunResult JobSl(Run& run, std::size_t blockSize = SlSource::DefaultBlock);

}  // namespace sondrix
