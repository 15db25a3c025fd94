#pragma once

namespace sondrix {

class Window;

// Disables (locked) or enables every field that must not change during an echogram's run, and the buttons
// that choose a source and a folder, then pumps.
void SetRunLock(Window& window, bool locked);

}  // namespace sondrix
