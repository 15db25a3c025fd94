#include "samples/echogram.h"
#include "test_run.h"

namespace sondrix {
namespace {

TEST(GoClick, WhatEndsBeforeAJob) {
  const std::string slash(1, PathSeparator);
  // The source and the message.
  for (const auto& [source, end] : {std::pair<std::string, std::string>("", " * select source file..."),
                                    {"folder" + slash, " begin processing..."},
                                    {"nopoint", " ! error GO: 5. Invalid procedure call or argument"}}) {
    TestRun test;
    test.settings.Source = source;
    test.settings.TargetPath = "";
    EXPECT_EQ(test.Click(), end);
    EXPECT_TRUE(test.window.IsEnabled("btnGO"));
    EXPECT_FALSE(test.window.busy);
  }
}

TEST(GoClick, TargetFolderIsMadeOrRefused) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, {Frame(2, 10)}));
  const std::string base = test.settings.TargetPath;
  test.settings.TargetPath = base + "new" + PathSeparator + "deep" + PathSeparator;
  EXPECT_TRUE(test.Click().ends_with(" * done")) << test.window.att;
  EXPECT_TRUE(test.HasOut("lake.csv"));
  // The last part without a separator isn't made, only completed.
  test.settings.TargetPath = base + "other";
  EXPECT_EQ(test.Click(), " ! error JobSl: 76. Path not found");
  EXPECT_EQ(test.settings.TargetPath, base + "other" + PathSeparator);
  test.settings.TargetPath = test.settings.Source + PathSeparator + "below" + PathSeparator;
  EXPECT_EQ(test.Click(), " ! target folder access denied");
  EXPECT_EQ(test.window.beeps, 2) << "the fault and the refusal";
  EXPECT_EQ(test.settings.DepthMP, "0x1000");
}

TEST(GoClick, OutputsAreNamedAfterTheSourceUnlessTheUserDoes) {
  TestRun test;
  test.Source("track.v1.sl2", EchogramBytes(2, {Frame(2, 10)}));
  test.Click();
  EXPECT_TRUE(test.HasOut("track.v1.csv"));
  EXPECT_EQ(test.settings.TargetName, "");
  test.settings.TargetName = "mine";
  test.Click();
  EXPECT_TRUE(test.HasOut("mine.csv"));
  EXPECT_EQ(test.settings.TargetName, "mine");
}

TEST(GoClick, LimitsOfTheFields) {
  TestRun test;
  test.settings.DepthSm = "-20";
  test.settings.DepthDiff = "1,5";
  test.settings.MaxDiff = "abc";
  test.settings.MaxGrad = "90";
  test.settings.DucerX = "30";
  test.settings.DucerY = "-40.0";
  test.Source("lake.sl2", EchogramBytes(2, {Frame(2, 10)})).Click();
  EXPECT_EQ(test.limits.DepthAddM, -0.2F);
  EXPECT_EQ(test.limits.DepthStepM, 0.015F);
  EXPECT_EQ(test.limits.MaxDistM, 0);
  EXPECT_EQ(test.limits.SidePercent, 80);
  EXPECT_EQ(test.limits.MaxTurnRad, 1.57079637F);
  EXPECT_NEAR(test.limits.DucerDist, 0.5, 1e-7);
  EXPECT_NEAR(test.limits.DucerAngle, 2.498091, 1e-6) << "to the right and behind";
  test.settings.DepthSm = "x";
  EXPECT_EQ(test.Click(), " ! error GO: 13. Type mismatch");
  test.settings.DepthSm = "";
  test.settings.MaxProc = "40000";
  EXPECT_EQ(test.Click(), " ! error GO: 6. Overflow");
  EXPECT_TRUE(test.window.IsEnabled("btnGO"));
}

TEST(Clicks, CropAndPictureBoxesActOnEachOther) {
  TestRun test;
  test.settings.MakeGraf = test.settings.SaveGraf = test.settings.MakeCut = true;
  CutClick(test.run);
  EXPECT_FALSE(test.settings.MakeGraf || test.settings.SaveGraf);
  EXPECT_FALSE(test.window.IsEnabled("SaveGraf") || test.window.IsEnabled("MakeScrn"));
  EXPECT_EQ(test.window.shown, (std::vector<std::string>{"MakeGraf", "SaveGraf"}));
  test.settings.MakeGraf = true;
  GrafClick(test.run);
  EXPECT_TRUE(test.window.IsEnabled("SaveGraf") && test.window.IsEnabled("MakeScrn"));
  test.settings.MakeCut = false;
  CutClick(test.run);
  EXPECT_TRUE(test.settings.MakeGraf);
}

TEST(Clicks, ChannelSetsItsMarker) {
  TestRun test;
  for (const auto& [channel, marker] :
       {std::pair(0, 0x07800000U), {2, 0x07800002U}, {5, 0x07800002U}, {9, 0x07800002U}}) {
    test.state.KnownSamples = 7;
    ChannelClick(test.run, channel);
    EXPECT_EQ(test.state.SelectedChannel, channel);
    EXPECT_EQ(test.state.ResyncMarker, marker);
    EXPECT_EQ(test.state.KnownSamples, 0);
  }
}

TEST(Clicks, TheRunLockHoldsForTheRunOnly) {
  TestRun test;
  test.Source("lake.sl2", EchogramBytes(2, {Frame(2, 10)}));
  bool locked = false, free = false;
  test.window.onPump = [&](int pump) {
    if (pump != 2) return;
    locked = !test.window.IsEnabled("DistDiff") && !test.window.IsEnabled("btnGO");
    free = test.window.IsEnabled("MakeGraf") && test.window.IsEnabled("RunEnd");
  };
  test.Click();
  EXPECT_TRUE(locked && free);
  EXPECT_TRUE(test.window.IsEnabled("DistDiff") && test.window.IsEnabled("btnGO"));
  EXPECT_FALSE(test.window.IsEnabled("RunEnd"));
}

}  // namespace
}  // namespace sondrix
