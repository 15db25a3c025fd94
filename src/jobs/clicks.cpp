#include "jobs/clicks.h"

#include "core/messages.h"
#include "core/run.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "sonar/layout/find_frame.h"

namespace sondrix {

void PauseClick(Run& run) {
  run.state.PauseFlag = !run.state.PauseFlag;
  run.state.ShowsResume = !run.state.ShowsResume;
  run.window.SetCaption("RunSet", RunSetCaption(run.state));
}

void StopClick(Run& run) { run.state.StopFlag = true; }

void ChannelClick(Run& run, Channel channel) {
  run.state.SelectedChannel = channel;
  run.state.ResyncMarker = ResyncMarkerOf(channel);
  run.state.KnownSamples = 0;
}

void CutClick(Run& run) {
  if (!run.settings.MakeCut || !run.settings.MakeGraf) return;
  run.settings.MakeGraf = false;
  run.window.ShowField("MakeGraf");
  GrafClick(run);
}

void GrafClick(Run& run) {
  const bool on = run.settings.MakeGraf;
  run.window.SetEnabled("SaveGraf", on);
  run.window.SetEnabled("MakeScrn", on);
  if (on || !run.settings.SaveGraf) return;
  run.settings.SaveGraf = false;
  run.window.ShowField("SaveGraf");
}

void MarkClick(Run& run, std::int32_t mark) { run.state.MarkRequest = mark; }

bool CloseClick(Run& run) {
  if (run.window.IsEnabled("btnGO")) return true;
  run.state.StopFlag = true;
  return false;
}

}  // namespace sondrix
