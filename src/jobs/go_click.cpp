#include "core/fault.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/outputs.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"
#include "jobs/clicks.h"
#include "jobs/job_table.h"
#include "jobs/limits.h"

#include <string>
#include <string_view>

namespace sondrix {
namespace {

constexpr std::size_t RootLength = 3;  // of a drive's root, which needs no separator added
constexpr std::string_view DefaultPoiType = "0x1000";

void SetField(Run& run, std::string& field, std::string_view name, std::string text) {
  field = std::move(text);
  run.window.ShowField(name);
}

// A click that is turned away, with its report.
RunResult Refusal(Run& run, std::string_view Messages::*message, LineKind kind) {
  RunResult result;
  result.end = RunEnd::Refused;
  result.message = message;
  run.window.Beep();
  run.window.SetAtt(LineOf(result, run.messages), kind);
  return result;
}

// Puts target and point type into their full form; false if the target folder can't be made.
bool PrepareFields(Run& run) {
  Settings& settings = run.settings;
  const std::string& target = settings.TargetPath;
  if (!target.empty() && !MakeFolders(target)) return false;
  std::string folder = WithSeparator(target, RootLength);
  if (folder != target) SetField(run, settings.TargetPath, "TargetPath", std::move(folder));
  if (settings.DepthMP.empty()) SetField(run, settings.DepthMP, "DepthMP", std::string(DefaultPoiType));
  return true;
}

// The outputs' name from the source's. Fault 5 for a source without a point in its name.
void NameOutputs(Run& run) {
  if (!run.settings.TargetName.empty()) return;
  run.state.AutoName = true;
  const std::string name(FileNameOf(run.settings.Source));
  SetField(run, run.settings.TargetName, "TargetName", name);
  const std::size_t point = name.rfind('.');
  if (point == std::string::npos) throw Fault(FaultNumber::InvalidCall);
  SetField(run, run.settings.TargetName, "TargetName", name.substr(0, point));
}

void EnableRunButtons(Run& run, bool enabled) {
  run.window.SetEnabled("RunSet", enabled);
  run.window.SetEnabled("RunEnd", enabled);
}

RunResult RunToEnd(Run& run) {
  NameOutputs(run);
  EnableRunButtons(run, true);
  run.state.WaypointText.clear();
  run.window.SetSpd("");
  ClearViews(run.pictures);
  const std::string source = run.settings.Source;
  const std::string target = run.settings.TargetPath + run.settings.TargetName;
  run.outputs.Begin(source);
  RunResult result = JobOf(source).run(run);
  result.target = target;
  run.state.ShowsResume = false;
  run.window.SetCaption("RunSet", RunSetCaption(run.state));
  EnableRunButtons(run, false);
  if (run.state.AutoName) SetField(run, run.settings.TargetName, "TargetName", "");
  run.state.AutoName = false;
  return result;
}

// A close or a stop in the wait before the job ends the click there: an earlier output stays.
RunResult StartRun(Run& run) {
  Window& window = run.window;
  run.limits = LimitsOf(run.settings);
  window.SetEnabled("btnGO", false);
  window.SetBusy(true);
  window.SetAtt(run.messages.MsgBegin);
  window.RepaintAtt();
  run.state.StopFlag = false;
  window.Wait(run.state.DefectPause);
  RunResult result;
  if (run.state.StopFlag || window.IsToEnd()) {
    result.end = RunEnd::Stopped;
    result.message = &Messages::MsgAborted;
    window.SetAtt(LineOf(result, run.messages), LineKind::Notice);
    return result;
  }
  const std::string& source = run.settings.Source;  // events of the wait may have changed it
  if (!source.empty() && !IsSeparator(source.back())) return RunToEnd(run);
  result.end = RunEnd::Refused;
  return result;
}

void RestoreWindow(Run& run) {
  run.window.SetEnabled("btnGO", true);
  run.window.SetBusy(false);
}

RunResult Click(Run& run) {
  if (run.settings.Source.empty()) return Refusal(run, &Messages::MsgNoSource, LineKind::Notice);
  if (!PrepareFields(run)) return Refusal(run, &Messages::MsgTargetDenied, LineKind::Fault);
  return StartRun(run);
}

}  // namespace

RunResult GoClick(Run& run) {
  run.window.SetAtt("");
  run.state.PauseFlag = false;
  RunResult result;
  run.outputs.Begin(run.settings.Source);
  try {
    result = Click(run);
  } catch (...) {
    result.end = RunEnd::Failed;
    result.place = "GO";
    result.fault = CaughtFault();
    run.window.Beep();
    run.window.SetAtt(LineOf(result, run.messages), LineKind::Fault);
  }
  RestoreWindow(run);
  run.outputs.TakeInto(result);
  return result;
}

}  // namespace sondrix
