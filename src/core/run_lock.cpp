#include "core/run_lock.h"

#include "core/settings.h"
#include "core/window.h"

namespace sondrix {

void SetRunLock(Window& window, bool locked) {
  for (const Field& field : Fields()) {
    if (field.isLocked) window.SetEnabled(field.name, !locked);
  }
  for (const char* button : {"btnSource", "btnTargetPath"}) window.SetEnabled(button, !locked);
  window.Pump();
}

}  // namespace sondrix
