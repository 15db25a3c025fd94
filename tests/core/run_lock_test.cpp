#include "core/run_lock.h"

#include "test_window.h"

#include <gtest/gtest.h>
#include <set>

namespace sondrix {
namespace {

TEST(RunLock, TakesWhatARunReadsAndNothingElse) {
  TestWindow window;
  SetRunLock(window, true);
  std::set<std::string> locked;
  for (const auto& [control, enabled] : window.enabled) {
    if (!enabled) locked.insert(control);
  }
  EXPECT_EQ(locked,
            (std::set<std::string>{
                "Source",   "btnSource", "TargetPath", "btnTargetPath", "TargetName", "DepthMP", "MaxDiff",
                "DistDiff", "MaxGrad",   "DepthDiff",  "DepthSm",       "DefLvl",     "DefSlp",  "ScanSkip",
                "ScanCut",  "DucerX",    "DucerY",     "MaxSide",       "MaxProc",    "MakeCut", "HideCut",
                "UseDcm",   "UseRev",    "UseHead",    "UseXYZ",        "UseUTM",     "UseTyp"}));
  EXPECT_EQ(window.pumps, 1);
  SetRunLock(window, false);
  for (const auto& [control, enabled] : window.enabled) EXPECT_TRUE(enabled) << control;
}

}  // namespace
}  // namespace sondrix
