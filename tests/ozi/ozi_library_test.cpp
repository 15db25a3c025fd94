#include "ozi/ozi_library.h"

#include "platform/platform.h"
#include "platform/shared_library.h"
#include "samples/echogram.h"
#include "test_run.h"

#include <cfenv>
#include <cstdlib>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
  _putenv_s(name, value.c_str());
#else
  setenv(name, value.c_str(), 1);
#endif
}

// A run with a map program's library that notes its calls.
struct OziRun : TestRun {
  explicit OziRun(const char* recorder = OZI_RECORDER, const std::string& mood = "") {
    fs::create_directories(folder / "library");
    if (*recorder) fs::copy_file(recorder, Library());
    SetVariable("OZI_RECORD", (folder / "calls").string());
    SetVariable("OZI_MOOD", mood);
    link.Load = [this](OziLink& itself) { return LoadOziLibrary(itself, folders); };
  }
  fs::path Library() const { return folder / "library" / OziLibraryName(); }
  std::string Open() {
    settings.ViewOzi = true;
    OpenLink(link, settings, messages, window);
    return window.att;
  }
  // The lines of the calls since the last look.
  std::string Calls() const {
    const std::string path = (folder / "calls").string();
    const std::string lines = ReadWhole(path);
    fs::remove(path);
    return lines;
  }

  std::vector<std::string> folders{(folder / "nowhere").string(), (folder / "library").string()};
};

TEST(OziLibrary, WhatCantBeOpened) {
  const std::string missing = " ! copy oziapi.dll in the program folder or system directory";
  const std::string closed = " ! run OziExplorer and load appropriate target map";
  using Row = std::tuple<const char*, const char*, std::string>;
  for (const auto& [recorder, mood, end] :
       {Row{"", "", missing}, Row{OZI_RECORDER_SHORT, "", missing}, Row{OZI_RECORDER, "cut", missing},
        Row{OZI_RECORDER, "garbage", missing}, Row{OZI_RECORDER, "closed", closed}}) {
    SCOPED_TRACE(std::string(recorder) + mood);
    OziRun run(recorder, mood);
    // What is behind the first quarter may be for a debugger.
    if (mood == std::string("cut")) fs::resize_file(run.Library(), fs::file_size(run.Library()) / 4);
    EXPECT_EQ(run.Open(), end);
    EXPECT_FALSE(run.settings.ViewOzi);
    EXPECT_EQ(run.window.beeps, 1);
    EXPECT_EQ(run.window.shown, std::vector<std::string>{"ViewOzi"});
    // The program lives on, and the conversion does without.
    run.Source("clean.sl2", EchogramBytes(2, {Frame(2, 10)}));
    EXPECT_TRUE(run.Click().ends_with(" * done"));
  }
}

// A library of that name in the current folder, or under a relative folder, isn't taken.
TEST(OziLibrary, OnlyNamedFoldersCount) {
  OziRun run;
  const fs::path before = fs::current_path();
  fs::current_path(run.Library().parent_path());
  OziLink link;
  for (const char* folder : {"", ".", "../library"})
    EXPECT_FALSE(LoadOziLibrary(link, std::vector<std::string>{folder})) << folder;
  EXPECT_FALSE(LoadOziLibrary(link, OziLibraryFolders()));
  EXPECT_EQ(OziLibraryFolders(), (std::vector{ProgramFolder(), SystemLibraryFolder()}));
  fs::current_path(before);
  EXPECT_TRUE(LoadOziLibrary(link, run.folders));
}

TEST(OziLibrary, WhatALibraryLeavesBehindDoesNoHarm) {
  OziRun run(OZI_RECORDER, "noisy");
  const std::string att = run.Open();
  EXPECT_TRUE(att.starts_with(" запущен OziExplorer vВВВ"));
  EXPECT_EQ(att.find('\n'), std::string::npos);
  run.link.ShowTrack(1);
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

// The first point of a track asks whether the map has it.
TEST(OziLibrary, AnEchogramsRun) {
  OziRun run(OZI_RECORDER, "off-map");
  const std::string versions = " запущен OziExplorer v3.95 4m API v1.08";
  EXPECT_EQ(run.Open(), versions);
  run.folders.clear();
  EXPECT_EQ(run.Open(), versions) << "it is loaded once";
  const std::string opening = "oziGetApiVersion\noziGetVersion\noziFindOzi\n";
  EXPECT_EQ(run.Calls(), opening + opening);

  run.Source("lake.sl2", EchogramBytes(2, {Frame(2, 10)}));
  run.window.onPump = [&](int) {
    run.window.spd = "5.4 км/ч ";
    run.state.MarkRequest = MarkFish;
  };
  EXPECT_TRUE(run.Click().ends_with(" * done"));
  EXPECT_TRUE(HasDigest(run.Calls(), 0x4923377E206B681D)) << "with the place of the mark and its name";
  EXPECT_EQ(run.window.informed, std::vector<std::string>{"Load relevant map in OziExplorer"});
  EXPECT_TRUE(run.Out("lake_usr.wpt").find("\n17,3.05,") != std::string::npos);
}

// Each point, and the map moved there; the first of a segment asks whether the map has it.
TEST(OziLibrary, ATextJobsPoints) {
  for (const char* mood : {"off-map", ""}) {
    OziRun run(OZI_RECORDER, mood);
    run.Open();
    run.Calls();
    OziTrackOpen(run.link);
    for (const int code : {0, 1}) OziLivePoint(run.link, run.window, code, 55.1, 37.2, -3.5, 42515.25);
    run.link.CloseApi();
    const std::string calls = run.Calls();
    EXPECT_TRUE(HasDigest(calls, *mood ? 0xFD01A142387AD73E : 0x481D99A623BD59B2));
    EXPECT_TRUE(calls.find("oziCreateTrackPoint 1 0 55.100000000 37.200000000 -3.5000 42515.250000\n") !=
                std::string::npos);
    EXPECT_EQ(run.window.informed.size(), *mood ? 1U : 0U);
  }
}

}  // namespace
}  // namespace sondrix
