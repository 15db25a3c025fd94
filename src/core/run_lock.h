#pragma once

namespace sondrix {

class Window;

// Disables (locked) or enables every control that must not change during an echogram's run, then pumps.
void SetRunLock(Window& window, bool locked);

}  // namespace sondrix
