#pragma once

#include "core/messages.h"

namespace sondrix {

struct Run;

// Waits while the pause is on, waitMs milliseconds between two looks. False once the run is to stop, by the
// user or because the program ends; the notice stands in the log line then, in the language of that moment.
bool MayGoOn(Run& run, int waitMs, std::string_view Messages::*notice);

}  // namespace sondrix
