#include "core/fault.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"
#include "jobs/clicks.h"
#include "jobs/job_csv.h"
#include "jobs/job_log.h"
#include "jobs/job_mp.h"
#include "jobs/limits.h"
#include "sonar/job_sl.h"

#include <string>
#include <string_view>

namespace sondrix {
namespace {

constexpr std::size_t RootLength = 3;  // of a drive's root, which needs no separator added
constexpr std::string_view DefaultPoiType = "0x1000";

void RunSonar(Run& run) { JobSl(run); }

struct JobRow {
  std::string_view extension;
  void (*job)(Run& run);
};

constexpr JobRow Jobs[] = {{"sl2", RunSonar}, {"sl3", RunSonar}, {"log", JobLog}, {"mp", JobMp}};

void RunJob(Run& run) {
  const std::string_view source = run.settings.Source;
  const std::string_view extension = source.substr(source.rfind('.') + 1);
  for (const JobRow& row : Jobs) {
    if (row.extension == extension) return row.job(run);
  }
  JobCsv(run);
}

void SetField(Run& run, std::string& field, std::string_view name, std::string text) {
  field = std::move(text);
  run.window.ShowField(name);
}

// Puts target and point type into their full form; false if the target folder can't be made.
bool PrepareFields(Run& run) {
  Settings& settings = run.settings;
  const std::string& target = settings.TargetPath;
  if (!target.empty() && !MakeFolders(target)) {
    run.window.Beep();
    run.window.SetAtt(run.messages.MsgTargetDenied);
    return false;
  }
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

void RunToEnd(Run& run) {
  NameOutputs(run);
  EnableRunButtons(run, true);
  run.state.StopFlag = false;
  run.state.WaypointText.clear();
  run.window.SetSpd("");
  ClearViews(run.pictures);
  RunJob(run);
  run.state.ShowsResume = false;
  run.window.SetCaption("RunSet", RunSetCaption(run.state));
  EnableRunButtons(run, false);
  if (run.state.AutoName) SetField(run, run.settings.TargetName, "TargetName", "");
  run.state.AutoName = false;
}

void StartRun(Run& run) {
  Window& window = run.window;
  run.limits = LimitsOf(run.settings);
  window.SetEnabled("btnGO", false);
  window.SetBusy(true);
  window.SetAtt(run.messages.MsgBegin);
  window.RepaintAtt();
  window.Wait(run.state.DefectPause);
  const std::string& source = run.settings.Source;  // events of the wait may have changed it
  if (!source.empty() && !IsSeparator(source.back())) RunToEnd(run);
}

void RestoreWindow(Run& run) {
  run.window.SetEnabled("btnGO", true);
  run.window.SetBusy(false);
}

}  // namespace

void GoClick(Run& run) {
  run.window.SetAtt("");
  run.state.PauseFlag = false;
  try {
    if (run.settings.Source.empty()) {
      run.window.Beep();
      run.window.SetAtt(run.messages.MsgNoSource);
    } else {
      if (!PrepareFields(run)) return;
      StartRun(run);
    }
    RestoreWindow(run);
  } catch (...) {
    const Fault fault = CaughtFault();
    RestoreWindow(run);
    run.window.Beep();
    run.window.SetAtt(FaultLine("GO", fault));
  }
}

}  // namespace sondrix
