#include "app/empty_result.h"

#include "app/source_notes.h"
#include "core/files.h"
#include "core/run_result.h"
#include "core/settings.h"
#include "samples/echogram.h"

#include <functional>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

TEST(EmptyResult, TellsWhyThereAreNoPoints) {
  const ChannelCount empty{2, 5, 0}, deep{0, 3, 2}, unnamed{7, 4, 0};
  const struct {
    const char* source;
    std::function<void(RunResult&, Settings&)>
        change;  // of a run that met 5 frames of Downscan and nothing else
    const char* line;
  } rows[] = {
      {"a.sl2", [](auto& run, auto&) { run.points = 1; }, ""},
      {"a.sl2", [](auto& run, auto&) { run.end = RunEnd::Failed; }, ""},
      {"a.SL2", [](auto& run, auto&) { run.end = RunEnd::Refused; },
       "0 points: the extension \".SL2\" is read as a table, it has to be \".sl2\""},
      {"a.CSV", [](auto& run, auto&) { run.end = RunEnd::Refused; }, ""},
      {"a.sl2", [](auto& run, auto&) { run.frames = 0; }, "0 points: nothing in it could be read"},
      {"a.sl2", [](auto& run, auto&) { run.frames = 0, run.end = RunEnd::Stopped; },
       "0 points: the run was stopped before the first point"},
      {"a.csv", [](auto& run, auto&) { run.end = RunEnd::Stopped; },
       "0 points: the run was stopped before the first point"},
      {"a.sl2",
       [&](auto& run, auto&) {
         run.soundings = 2, run.channels = {deep, empty, unnamed};
       },
       "0 points: Downscan has no depth; Primary has 2 of 3; channel 7 has no depth"},
      {"a.sl2", [&](auto& run, auto&) { run.channels = {deep}; },
       "0 points: no frame of Downscan; Primary has 2 of 3"},
      {"a.sl2", [](auto&, auto&) {}, "0 points: no frame of Downscan is sound"},
      {"a.sl2", [](auto&, auto& fields) { fields.ScanSkip = "8"; },
       "0 points: the interval from 8 lies outside the indices 4 to 7"},
      {"a.sl2", [](auto&, auto& fields) { fields.ScanSkip = "8", fields.ScanCut = "9"; },
       "0 points: the interval 8 to 9 lies outside the indices 4 to 7"},
      {"a.sl2", [](auto&, auto& fields) { fields.ScanSkip = "7"; },
       "0 points: no frame of Downscan in the interval from 7"},
      {"a.sl2", [](auto&, auto& fields) { fields.ScanCut = "3"; },
       "0 points: the interval to 3 ends before the first index 4"},
      {"a.sl2", [](auto&, auto& fields) { fields.ScanCut = "4"; },
       "0 points: no frame of Downscan in the interval to 4"},
      {"a.sl2",
       [](auto& run, auto& fields) { run.soundings = run.channels[0].withDepth = 1, fields.ScanCut = "5"; },
       "0 points: Downscan has no depth in the interval to 5"},
      {"a.sl2", [](auto& run, auto&) { run.soundings = run.withDepth = 3; },
       "0 points: every sounding (3) fell to DistDiff = 1 m"},
      {"a.sl3",
       [](auto& run, auto& fields) {
         run.soundings = run.withDepth = 3;
         run.channels[0].channel = 9, fields.UseTyp = 9;
       },
       "0 points: in 3 frames no 3D sounding within DistDiff, MaxSide and MaxProc"},
      {"a.csv", [](auto& run, auto&) { run.channels = {}; },
       "0 points: no row of Downscan; no row of three columns"},
      {"a.csv", [&](auto& run, auto& fields) { run.channels = {deep}, fields.UseTyp = 9; },
       "0 points: tables hold no rows of 3D; Primary has 2 of 3"},
      {"a.csv", [](auto& run, auto&) { run.soundings = 2; }, "0 points: no depth but 0"},
      {"a.csv", [](auto& run, auto&) { run.soundings = run.withDepth = 2; },
       "0 points: no depth has a position"},
      {"a.log", [](auto&, auto&) {}, "0 points: no $GPGGA with a $SDDBT behind it"},
      {"a.log", [](auto& run, auto&) { run.soundings = 2; }, "0 points: no depth but 0"},
      {"a.log", [](auto& run, auto&) { run.soundings = run.withDepth = 2; },
       "0 points: no position has a satellite fix"},
      {"a.log", [](auto& run, auto&) { run.soundings = run.withDepth = run.withFix = 2; },
       "0 points: every sounding (2) fell to DistDiff = 1 m or DepthDiff = 10 cm"},
      {"a.mp", [](auto&, auto&) {}, "0 points: no [POLYLINE] with Label and Data"},
  };
  for (const auto& [source, change, line] : rows) {
    RunResult result;
    result.frames = 5;
    result.channels = {empty};
    result.firstIndex = 4;
    result.lastIndex = 7;
    Settings settings;
    change(result, settings);
    EXPECT_EQ(WhyEmptyLine(result, settings, source, LangEnglish), line);
  }
}

TEST(SourceNotes, TellWhatASourceHolds) {
  const auto notes = [](const std::string& name, std::span<const std::uint8_t> bytes) {
    const std::string path = testing::TempDir() + name;
    if (!bytes.empty()) OutputFile(path).Write(bytes);
    const SourceNotes found = NotesOn(path, LangEnglish);
    std::string text;
    for (const std::string& line : found.lines) text += line + '|';
    for (const Channel channel : found.missing) text += std::to_string(ChannelByte(channel));
    if (!bytes.empty()) DeleteIfThere(path);
    return text;
  };
  const auto frames = EchogramBytes(2, {Frame(2, 10), Frame(7, 0), Frame(2, 20)});
  const std::string_view table = "Channel,a,b,c,d,Depth\nPrimary,1,2,3,4,30,6,7,8,9,10,1,2,0\n";
  const std::span rows(reinterpret_cast<const std::uint8_t*>(table.data()), table.size());
  EXPECT_EQ(notes("notes.sl2", frames),
            "notes.sl2: 6.2 kB, 3 frames|Downscan: 2 frames, 2 with a depth, indices 0 to 1|"
            "channel 7: 1 frames, 0 with a depth, indices 0 to 0|2016-05-25 14:00:00 to 2016-05-25 14:00:01|"
            "depths 3.05 to 6.1 m|059");
  EXPECT_EQ(notes("notes.csv", rows),
            "notes.csv: table, 58 B, 2 lines|Primary: 1 rows, 1 with a depth|1 soundings seen|"
            "depths 9.14 to 9.14 m|259");
  EXPECT_EQ(notes("notes.SL2", frames), "the extension \".SL2\" is read as a table, it has to be \".sl2\"|");
  EXPECT_EQ(notes("none.sl2", {}), "none.sl2: can't be read|");
  EXPECT_TRUE(NotesOn("", LangEnglish).lines.empty());
}

}  // namespace
}  // namespace sondrix
