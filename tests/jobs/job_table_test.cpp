#include "jobs/job_table.h"

#include "core/number_text.h"
#include "core/rounding.h"
#include "core/run_limits.h"
#include "fault_in.h"
#include "jobs/limits.h"
#include "test_run.h"

namespace sondrix {
namespace {

// | stands for the separator of folders.
TEST(JobTable, WhatASourceWrites) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"a.b.sl2", "TargetPath=long|", "long|a.b.csv long|a.b_bad.txt long|a.b_usr.wpt long|a.b_ch2.bmp "},
      {"a.sl3", "TargetPath=long TargetName=n MakeCut=1 MakeGraf=0 UseTyp=9 SaveGraf=1",
       "long|n.csv long|n_bad.txt long|n_usr.wpt long|n_ch9.sl2 long|echo "},
      {"b|a.log", "TargetPath=dir SaveGraf=1", "dira.drd.txt dira.srf.txt dira.plt dira.mp dira.bad.txt "},
      {"b|a.mp", "TargetPath=long TargetName=n", "b|a.txt "},
      {"a.txt", "TargetPath=", "a.txt a.plt a.mp a_bad.txt "},
      {"a.SL2", "TargetPath=", "a.txt a.plt a.mp a_bad.txt "},
      {"noPoint", "TargetName=n", "n.txt n.plt n.mp n_bad.txt "},
      {"noPoint", "", ""},
      {"b|", "TargetName=n", ""}};
  const auto path = [](std::string text) {
    std::ranges::replace(text, '|', PathSeparator);
    return text;
  };
  for (const auto& [source, fields, outputs] : rows) {
    TestRun test;
    test.settings = {};
    std::string found;
    for (const std::string& output : OutputsOf(test.Set(path(fields)).settings, path(source)))
      found += output + " ";
    EXPECT_EQ(found, path(outputs)) << source;
  }
}

TEST(Limits, OfTheFields) {
  const std::tuple<const char*, const char*, int> rows[] = {
      {"DepthSm=-25 DepthDiff=10 DistDiff=1,5 MaxDiff=300 MaxSide=x MaxProc=79,5 MaxGrad=90 DucerX=300 "
       "DucerY=-400",
       "-0.25 0.1 1.5 300 0 80 1.5708 3 -4 5 2.4981 ", 0},
      {"DepthSm= DepthDiff= MaxSide=20 MaxProc= MaxGrad=-5 DucerY=100", "0 0 1 300 20 0 -0.0873 0 1 1 0 ", 0},
      {"DepthSm=x", "", 13},
      {"MaxProc=40000", "", 6},
      {"DucerX=1e42", "", 6}};
  for (const auto& [fields, numbers, fault] : rows) {
    TestRun test;
    test.settings = {};
    test.Set(fields);
    std::string found;
    EXPECT_EQ(FaultIn([&] {
                const RunLimits limits = LimitsOf(test.settings);
                for (const double number :
                     {double{limits.DepthAddM}, double{limits.DepthStepM}, double{limits.MinDistM},
                      double{limits.MaxDistM}, double{limits.SideLimitM}, double(limits.SidePercent),
                      double{limits.MaxTurnRad}, double{limits.DucerXM}, double{limits.DucerYM},
                      limits.DucerDist, limits.DucerAngle})
                  found += LocText(RoundTo(number, 4)) + " ";
              }),
              fault);
    EXPECT_EQ(found, numbers) << fields;
  }
}

}  // namespace
}  // namespace sondrix
