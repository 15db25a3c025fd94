#pragma once

#include "core/fault.h"

#include <optional>
#include <string>

namespace sondrix {

struct Session;

// What a window would show at the end of an echogram's run, as "<target name>_ch<channel>.bmp" among the
// outputs. Nothing where no frame was drawn or the run failed. Returns the fault if the file can't be
// written.
std::optional<Fault> SaveEndPicture(Session& session, const std::string& source);

}  // namespace sondrix
