#include "ozi/ozi_library.h"

#include "platform/platform.h"
#include "samples/damage.h"
#include "samples/lake.h"
#include "samples/nmea_log.h"
#include "samples/text_export.h"
#include "samples/three_column.h"
#include "test_run.h"

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
  OziRun& Text(const std::string& name, const std::string& text) {
    Source(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    return *this;
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
         fs::resize_file(run.Library(), fs::file_size(run.Library()) / 2);
       },
       Missing},
      {"no library at all", "",
       [](OziRun& run) {
         std::ofstream(run.Library()) << "MZ\x7F"
                                         "ELF and no more";
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
  EXPECT_EQ(run.With(OZI_RECORDER).Open(), " запущен OziExplorer v3.95.4m API v1.08");
  bool marked = false;
  EXPECT_EQ(run.Calls(), (Lines{"oziGetApiVersion", "oziGetVersion", "oziFindOzi"}));

  run.Source("lake.sl3", LakeEchogram());
  run.settings.ScanCut = "650";
  run.window.onPump = [&](int) {
    if (run.state.KnownSamples == 0 || !run.window.att.starts_with(" 50%") || marked) return;
    marked = true;
    run.window.spd = "5.4 км/ч ";
    run.state.MarkRequest = MarkFish;
  };
  EXPECT_TRUE(run.Click().ends_with(" * done"));
  EXPECT_EQ(
      run.Calls(),
      (Lines{"oziShowAllTracks", "oziShowTrack 1",
             "oziCreateTrackPoint 1 1 56.000001414 37.000004220 18.4000 42515.583333",
             "oziCenterMapAtPositionWithMark 56.000001414 37.000004220",
             "oziIsPositionOnMap 56.000001414 37.000004220", "oziFindMapAtPosition 56.000001414 37.000004220",
             "oziCreateTrackPoint 1 0 56.000036696 37.000274621 20.8000 42515.583414",
             "oziCenterMapAtPositionWithMark 56.000036696 37.000274621",
             "oziCreateTrackPoint 1 0 56.000066937 37.000545022 21.9000 42515.583484",
             "oziCenterMapAtPositionWithMark 56.000066937 37.000545022",
             "oziCreateTrackPoint 1 0 56.000102218 37.000815423 24.5000 42515.583565",
             "oziCenterMapAtPositionWithMark 56.000102218 37.000815423",
             "oziCreateTrackPoint 1 0 56.000011495 37.000986677 28.6000 42515.583646",
             "oziCenterMapAtPositionWithMark 56.000011495 37.000986677",
             "oziCreateTrackPoint 1 0 55.999930851 37.000779370 27.7000 42515.583715",
             "oziCenterMapAtPositionWithMark 55.999930851 37.000779370",
             "oziCreateTrackPoint 1 0 55.999900610 37.000499955 38.6000 42515.583796",
             "oziCenterMapAtPositionWithMark 55.999900610 37.000499955",
             ("oziCreateWP '11.93' 23 55.999900610 37.000490942 11.9300 42515.583796 3 2 0 "
              "0 16776960 0 '#604 5.4 \xEA\xEC/\xF7 ' 6 0 17")}));
  EXPECT_EQ(run.window.informed, Lines{"Load relevant map in OziExplorer"});
  EXPECT_TRUE(run.Out("lake_usr.wpt").find("\n17,11.93,") != std::string::npos);
}

// What the rows of a track file become on the map: each point, and the map moved there; the first of a
// segment asks whether the map has it. The file rounds the feet and turns their sign.
TEST(OziLibrary, ATextJobsRun) {
  const std::pair<std::string, std::string> sources[] = {
      {"export.csv", TextExport({})}, {"three.txt", ThreeColumn({})}, {"boat.log", NmeaLog()}};
  for (const auto& [name, text] : sources) {
    OziRun run("off-map");
    run.With(OZI_RECORDER).Text(name, text).Open();
    run.Calls();
    EXPECT_TRUE(run.Click().find("files successfully created") != std::string::npos) << name;
    Lines expected{"oziShowAllTracks", "oziShowTrack 1"};
    std::vector<double> feet;
    Lines rows = run.OutLines(name.substr(0, name.find('.')) + ".plt");
    rows.erase(rows.begin(), rows.begin() + 6);
    for (const std::string& row : rows) {
      std::smatch cell;
      ASSERT_TRUE(std::regex_match(row, cell, std::regex("(.*?),(.*?),(.),-(.*?),.*"))) << row;
      char place[64];
      std::snprintf(place, sizeof place, "%.9f %.9f", std::stod(cell[1]), std::stod(cell[2]));
      expected.push_back("oziCreateTrackPoint 1 " + cell[3].str() + ' ' + place);
      feet.push_back(std::stod(cell[4]));
      expected.push_back(std::string("oziCenterMapAtPosition ") + place);
      if (cell[3] != "1") continue;
      expected.push_back(std::string("oziIsPositionOnMap ") + place);
      expected.push_back(std::string("oziFindMapAtPosition ") + place);
    }
    Lines calls = run.Calls();
    std::size_t point = 0;
    for (std::string& call : calls) {
      std::smatch cell;
      if (!std::regex_match(call, cell, std::regex("(oziCreate.*) (.*) \\d{5}\\.000000"))) continue;
      ASSERT_LT(point, feet.size()) << name;
      EXPECT_NEAR(std::stod(cell[2]), feet[point++], 0.0101) << name;
      call = std::string(cell[1]);
    }
    EXPECT_EQ(calls, expected) << name;
    EXPECT_GT(point, 100u) << name;
  }
}

}  // namespace
}  // namespace sondrix
