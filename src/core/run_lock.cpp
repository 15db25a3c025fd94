#include "core/run_lock.h"

#include "core/window.h"

#include <string_view>

namespace sondrix {
namespace {

constexpr std::string_view RunLockList[] = {
    "UseXYZ",   "UseUTM",     "UseHead",       "DucerY",     "DucerX",    "MaxGrad",   "UseRev",
    "MaxSide",  "UseTyp",     "HideCut",       "MakeCut",    "ScanCut",   "MaxDiff",   "UseDcm",
    "ScanSkip", "DefSlp",     "DefLvl",        "MaxProc",    "DepthMP",   "DepthDiff", "DistDiff",
    "DepthSm",  "TargetName", "btnTargetPath", "TargetPath", "btnSource", "Source"};

}  // namespace

void SetRunLock(Window& window, bool locked) {
  for (const std::string_view control : RunLockList) window.SetEnabled(control, !locked);
  window.Pump();
}

}  // namespace sondrix
