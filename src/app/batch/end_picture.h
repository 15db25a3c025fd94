#pragma once

#include <string_view>

namespace sondrix {

struct RunResult;
struct Session;

// What a window would show at the end of an echogram's run, as "<target name>_ch<channel>.bmp" among the
// outputs of the result. Nothing where no frame was drawn or the run failed. A picture that can't be written
// joins the result's lost outputs.
void SaveEndPicture(Session& session, std::string_view source, RunResult& result);

}  // namespace sondrix
