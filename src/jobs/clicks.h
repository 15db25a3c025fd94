#pragma once

#include "core/channel.h"
#include "core/run_result.h"

#include <cstdint>

namespace sondrix {

struct Run;

// What the window's controls do. Each is called after Settings has taken a control's new value.

// The start button: checks source and target, fills the run's limits, names the outputs, and lets the job
// that the source's extension chooses run to its end. Every fault is reported in the log line.
RunResult GoClick(Run& run);

// Pause and resume, and the caption that goes with them.
void PauseClick(Run& run);
void StopClick(Run& run);

// A channel was chosen.
void ChannelClick(Run& run, Channel channel);

// MakeCut or MakeGraf changed.
void CutClick(Run& run);
void GrafClick(Run& run);

// A mark at the next point with a depth: MarkRelief or MarkFish.
void MarkClick(Run& run, std::int32_t mark);

// The window is to be closed; false while a job runs, which is then told to stop.
bool CloseClick(Run& run);

}  // namespace sondrix
