#include "core/pause.h"

#include "core/run.h"
#include "core/run_state.h"
#include "core/window.h"

namespace sondrix {

bool MayGoOn(Run& run, int waitMs, std::string_view Messages::*notice) {
  RunState& state = run.state;
  for (;;) {
    if (run.window.IsToEnd()) state.StopFlag = true;
    if (state.StopFlag || !state.PauseFlag) break;
    run.window.Wait(waitMs);
    run.window.Pump();
  }
  if (!state.StopFlag) return true;
  run.window.SetAtt(run.messages.*notice, LineKind::Notice);
  return false;
}

}  // namespace sondrix
