#include "core/messages.h"
#include "core/number_text.h"
#include "core/pause.h"
#include "core/run.h"
#include "core/run_state.h"
#include "core/window.h"
#include "sonar/sl_run.h"

namespace sondrix {
namespace {

constexpr int PauseWaitMs = 1000;

}  // namespace

bool MayScanOn(SlRun& sl, std::string_view Messages::*notice) {
  if (MayGoOn(sl.run, PauseWaitMs, notice)) return true;
  sl.result.end = sl.isCutShort ? RunEnd::EndedEarly : RunEnd::Stopped;
  return false;
}

void ShowLogError(SlRun& sl, std::int64_t filePosition) {
  sl.line.assign(sl.run.messages.MsgLogError);
  AppendWhole(sl.line, PercentOf(sl, filePosition));
  sl.line.append("% ").append(sl.run.messages.WordOffset);
  AppendWhole(sl.line, filePosition);
  sl.line.append("...");
  sl.progress.isShown = false;
  sl.run.window.SetAtt(sl.line, LineKind::Fault);
  sl.run.window.Pump();
}

bool Resynchronise(SlRun& sl) {
  sl.search.At = sl.source->Pos + SearchStart;
  for (;;) {
    const SearchStep step = StepSearch(sl.search, *sl.source, sl.run.state.ResyncMarker);
    if (step.found) break;
    if (step.isReportDue) ShowLogError(sl, step.position);
    if (step.isPastEnd) {
      sl.result.end = RunEnd::EndedEarly;
      return false;
    }
    if (!MayScanOn(sl, &Messages::MsgStopped)) return false;
  }
  sl.source->Pos = sl.search.At - MarkerOffset;
  return true;
}

}  // namespace sondrix
