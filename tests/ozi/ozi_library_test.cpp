#include "ozi/ozi_library.h"

#include "platform/platform.h"
#include "samples/damage.h"
#include "samples/lake.h"
#include "test_run.h"

#include <array>
#include <cfenv>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <regex>

namespace sondrix {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
  _putenv_s(name, value.c_str());
#else
  setenv(name, value.c_str(), 1);
#endif
}

// A run with a map program's library that notes its calls.
struct OziRun : TestRun {
  explicit OziRun(const std::string& mood = "") {
    fs::create_directories(folder / "library");
    SetVariable("OZI_RECORD", (folder / "calls").string());
    SetVariable("OZI_MOOD", mood);
    link.Load = [this](OziLink& itself) { return LoadOziLibrary(itself, folders); };
  }
  fs::path Library() const { return folder / "library" / OziLibraryName; }
  OziRun& With(const char* library) {
    fs::copy_file(library, Library());
    return *this;
  }
  std::string Open() {
    settings.ViewOzi = true;
    OpenLink(link, settings, messages, window);
    return window.att;
  }
  // The calls since the last look.
  Lines Calls() {
    std::ifstream file(folder / "calls");
    Lines lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    file.close();
    fs::remove(folder / "calls");
    return lines;
  }

  std::vector<std::string> folders{(folder / "nowhere").string(), (folder / "library").string()};
};

constexpr std::string_view Missing = " ! copy oziapi.dll in the program folder or system directory";

TEST(OziLibrary, WhatCantBeOpened) {
  struct Row {
    const char* what;
    const char* mood;
    std::function<void(OziRun&)> prepare;
    std::string_view end;
  };
  const auto recorder = [](OziRun& run) { run.With(OZI_RECORDER); };
  const Row rows[] = {
      {"no library", "", [](OziRun&) {}, Missing},
      {"a function is missing", "", [](OziRun& run) { run.With(OZI_RECORDER_SHORT); }, Missing},
      {"cut in the middle", "",
       [](OziRun& run) {
         run.With(OZI_RECORDER);
         fs::resize_file(run.Library(),
                         fs::file_size(run.Library()) / 4);  // what is behind may be for a debugger
       },
       Missing},
      {"a folder", "", [](OziRun& run) { fs::create_directory(run.Library()); }, Missing},
      {"garbage", "garbage", recorder, Missing},
      {"not running", "closed", recorder, " ! run OziExplorer and load appropriate target map"},
  };
  for (const Row& row : rows) {
    OziRun run(row.mood);
    row.prepare(run);
    EXPECT_EQ(run.Open(), row.end) << row.what;
    EXPECT_FALSE(run.settings.ViewOzi) << row.what;
    EXPECT_EQ(run.window.beeps, 1) << row.what;
    EXPECT_EQ(run.window.shown, Lines{"ViewOzi"}) << row.what;
    // The program lives on, and the conversion does without.
    run.Source("clean.sl2", CleanEchogram(2));
    EXPECT_TRUE(run.Click().ends_with(" * done")) << row.what;
  }
}

// A library of that name in the current folder, or under a relative folder, isn't taken.
TEST(OziLibrary, OnlyNamedFoldersCount) {
  OziRun run;
  run.With(OZI_RECORDER);
  const fs::path before = fs::current_path();
  fs::current_path(run.Library().parent_path());
  OziLink link;
  for (const char* folder : {"", ".", "../library"}) {
    EXPECT_FALSE(LoadOziLibrary(link, std::vector<std::string>{folder})) << folder;
  }
  EXPECT_FALSE(LoadOziLibrary(link, OziLibraryFolders()));
  fs::current_path(before);
  EXPECT_TRUE(LoadOziLibrary(link, run.folders));
  EXPECT_EQ(OziLibraryFolders(), (std::vector<std::string>{ProgramFolder(), SystemLibraryFolder()}));
}

TEST(OziLibrary, WhatALibraryLeavesBehindDoesNoHarm) {
  OziRun run("noisy");
  const std::string att = run.With(OZI_RECORDER).Open();
  EXPECT_TRUE(att.starts_with(" запущен OziExplorer vВВВ"));
  EXPECT_EQ(att.find('\n'), std::string::npos);
  EXPECT_LT(att.size(), 20000u);
  run.link.ShowTrack(1);
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

TEST(OziLibrary, AnEchogramsRun) {
  OziRun run("off-map");
  const std::string versions = " запущен OziExplorer v3.95.4m API v1.08";
  EXPECT_EQ(run.With(OZI_RECORDER).Open(), versions);
  run.folders.clear();
  EXPECT_EQ(run.Open(), versions) << "it is loaded once";
  const Lines opening{"oziGetApiVersion", "oziGetVersion", "oziFindOzi"};
  Lines expected = opening;
  expected.insert(expected.end(), opening.begin(), opening.end());
  EXPECT_EQ(run.Calls(), expected);

  run.Source("lake.sl3", LakeEchogram());
  run.settings.ScanCut = "650";
  bool marked = false;
  run.window.onPump = [&](int) {
    if (run.state.KnownSamples == 0 || !run.window.att.starts_with(" 50%") || marked) return;
    marked = true;
    run.window.spd = "5.4 км/ч ";
    run.state.MarkRequest = MarkFish;
  };
  EXPECT_TRUE(run.Click().ends_with(" * done"));
  expected = {"oziShowAllTracks", "oziShowTrack 1"};
  for (const auto& [code, place, feetAndDate] :
       std::vector<std::array<std::string, 3>>{{"1", "56.000001414 37.000004220", "18.4000 42515.583333"},
                                               {"0", "56.000036696 37.000274621", "20.8000 42515.583414"},
                                               {"0", "56.000066937 37.000545022", "21.9000 42515.583484"},
                                               {"0", "56.000102218 37.000815423", "24.5000 42515.583565"},
                                               {"0", "56.000011495 37.000986677", "28.6000 42515.583646"},
                                               {"0", "55.999930851 37.000779370", "27.7000 42515.583715"},
                                               {"0", "55.999900610 37.000499955", "38.6000 42515.583796"}}) {
    expected.push_back("oziCreateTrackPoint 1 " + code + " " + place + " " + feetAndDate);
    expected.push_back("oziCenterMapAtPositionWithMark " + place);
    if (code == "0") continue;
    expected.push_back("oziIsPositionOnMap " + place);
    expected.push_back("oziFindMapAtPosition " + place);
  }
  expected.push_back(
      "oziCreateWP '11.93' 23 55.999900610 37.000490942 11.9300 42515.583796 3 2 0 "
      "0 16776960 0 '#604 5.4 \xEA\xEC/\xF7 ' 6 0 17");
  EXPECT_EQ(run.Calls(), expected);
  EXPECT_EQ(run.window.informed, Lines{"Load relevant map in OziExplorer"});
  EXPECT_TRUE(run.Out("lake_usr.wpt").find("\n17,11.93,") != std::string::npos);
}

// Each point, and the map moved there; the first of a segment asks whether the map has it.
TEST(OziLibrary, ATextJobsRun) {
  struct Row {
    const char *mood, *name;
    std::string text;
    Lines calls;
  };
  const std::string one = "55.100000000 37.100000000", two = "55.200000000 37.200000000";
  const std::string fix = "55.166667000 37.333333000";
  for (const Row& row :
       std::vector<Row>{{"off-map",
                         "three.csv",
                         "lat,lon,depth\n55.1,37.1,12\n55.2,37.2,-3.5\n",
                         {"oziCreateTrackPoint 1 0 " + one + " 12.0000 day", "oziCenterMapAtPosition " + one,
                          "oziCreateTrackPoint 1 1 " + two + " -3.5000 day", "oziCenterMapAtPosition " + two,
                          "oziIsPositionOnMap " + two, "oziFindMapAtPosition " + two}},
                        {"",
                         "boat.log",
                         "$GPGGA,120000,5510.0000,N,03720.0000,E,1,08\n$SDDBT,30.25,f\n",
                         {"oziCreateTrackPoint 1 1 " + fix + " 30.2500 day", "oziCenterMapAtPosition " + fix,
                          "oziIsPositionOnMap " + fix}}}) {
    OziRun run(row.mood);
    run.With(OZI_RECORDER).Open();
    run.settings.MaxDiff = "300";
    run.Calls();
    run.Source(row.name, {reinterpret_cast<const std::uint8_t*>(row.text.data()), row.text.size()});
    EXPECT_TRUE(run.Click().find("files successfully created") != std::string::npos) << row.name;
    Lines expected{"oziShowAllTracks", "oziShowTrack 1"};
    expected.insert(expected.end(), row.calls.begin(), row.calls.end());
    Lines calls = run.Calls();
    for (std::string& call : calls) call = std::regex_replace(call, std::regex(" \\d{5}\\.000000$"), " day");
    EXPECT_EQ(calls, expected) << row.name;
    EXPECT_EQ(run.window.informed.size(), *row.mood == 0 ? 0U : 1U) << row.name;
  }
}

}  // namespace
}  // namespace sondrix
