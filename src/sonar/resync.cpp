#include "core/fault.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/run.h"
#include "core/run_state.h"
#include "core/window.h"
#include "sonar/sl_run.h"

namespace sondrix {
namespace {

constexpr std::int64_t SearchStart = 0x22;  // from the start of the bad frame
constexpr std::int64_t SearchStep = 2;
constexpr std::int64_t ReportStep = 100;  // bytes searched between two reports
constexpr int PauseWaitMs = 1000;

}  // namespace

bool MayGoOn(SlRun& sl, std::string_view aborted) {
  const RunState& state = sl.run.state;
  while (state.PauseFlag && !state.StopFlag) {
    sl.run.window.Wait(PauseWaitMs);
    sl.run.window.Pump();
  }
  if (state.StopFlag) sl.run.window.SetAtt(aborted);
  return !state.StopFlag;
}

void ShowLogError(SlRun& sl, std::int64_t filePosition) {
  sl.line.assign(sl.run.messages.MsgLogError);
  AppendWhole(sl.line, PercentOf(sl, filePosition));
  sl.line.append("% ").append(sl.run.messages.WordOffset);
  AppendWhole(sl.line, filePosition);
  sl.line.append("...");
  sl.progress.isShown = false;
  sl.run.window.SetAtt(sl.line);
  sl.run.window.Pump();
}

bool Resynchronise(SlRun& sl) {
  SlSource& source = *sl.source;
  const std::int64_t fileLength = source.FileLength();
  std::int64_t at = source.Pos + SearchStart;
  for (;;) {
    if (at + 4 > SlSource::ChunkLength + 1) throw Fault(FaultNumber::Subscript);
    if (U32At(source.Bytes(at, 4).data()) == sl.run.state.ResyncMarker) {
      source.Pos = at - MarkerOffset;
      return true;
    }
    at += SearchStep;
    source.Pos = at;
    sl.ScanCount += SearchStep;
    if (sl.ScanCount % ReportStep == 0) ShowLogError(sl, source.BaseOffset + at);
    if (sl.ScanCount * 100 > fileLength) {
      at += sl.ScanCount;
      if (source.BaseOffset + at > fileLength) return false;
      sl.ScanCount = 0;
    }
    if (!MayGoOn(sl, sl.run.messages.MsgStopped)) return false;
  }
}

}  // namespace sondrix
