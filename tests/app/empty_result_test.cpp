#include "app/empty_result.h"

#include "app/source_notes.h"
#include "samples/echogram.h"
#include "temporary_folder.h"
#include "test_run.h"

namespace sondrix {
namespace {

// "failed 5 2 1 0 0 2:5/1": the end of a run, its frames, soundings, those with a depth and with a fix, the
// points, and the frames and depths of each channel that it met.
RunResult ResultOf(const std::string& text) {
  RunResult result;
  std::istringstream words(text);
  std::string end;
  words >> end >> result.frames >> result.soundings >> result.withDepth >> result.withFix >> result.points;
  while (NameOf(result.end) != end) result.end = static_cast<RunEnd>(static_cast<int>(result.end) + 1);
  char mark = 0;
  int channel = 0;
  for (ChannelCount count; words >> channel >> mark >> count.frames >> mark >> count.withDepth;) {
    count.channel = static_cast<std::uint8_t>(channel);
    result.channels.push_back(count);
  }
  result.firstIndex = 4;
  result.lastIndex = 7;
  return result;
}

TEST(EmptyResult, TellsWhyThereAreNoPoints) {
  const char* const stopped = "the run was stopped before the first point";
  const struct {
    const char *source, *run, *fields;
    std::string line;
  } rows[] = {
      {"a.sl2", "finished 5 0 0 0 1", "", ""},
      {"a.sl2", "failed 5 0 0 0 0", "", ""},
      {"a.SL2", "refused 5 0 0 0 0", "", "the extension \".SL2\" is read as a table, it has to be \".sl2\""},
      {"a.CSV", "refused 5 0 0 0 0", "", ""},
      {"a.sl2", "finished 0 0 0 0 0", "", "nothing in it could be read"},
      {"a.sl2", "stopped 0 0 0 0 0", "", stopped},
      {"a.csv", "stopped 5 0 0 0 0", "", stopped},
      {"a.sl2", "finished 5 2 0 0 0 0:3/2 2:5/0 7:4/0", "",
       "Downscan has no depth; Primary has 2 of 3; channel 7 has no depth"},
      {"a.sl2", "finished 5 0 0 0 0 0:3/2", "", "no frame of Downscan; Primary has 2 of 3"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "", "no frame of Downscan is sound"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "ScanSkip=8",
       "the interval from 8 lies outside the indices 4 to 7"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "ScanSkip=8 ScanCut=9",
       "the interval 8 to 9 lies outside the indices 4 to 7"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "ScanSkip=7", "no frame of Downscan in the interval from 7"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "ScanCut=3", "the interval to 3 ends before the first index 4"},
      {"a.sl2", "finished 5 0 0 0 0 2:5/0", "ScanCut=4", "no frame of Downscan in the interval to 4"},
      {"a.sl2", "finished 5 1 0 0 0 2:5/1", "ScanCut=5", "Downscan has no depth in the interval to 5"},
      {"a.sl2", "finished 5 3 3 0 0 2:5/0", "DistDiff=1,5", "every sounding (3) fell to DistDiff = 1.5 m"},
      {"a.sl3", "finished 5 3 3 0 0 9:5/0", "UseTyp=9",
       "in 3 frames no 3D sounding within DistDiff, MaxSide and MaxProc"},
      {"a.csv", "finished 0 0 0 0 0", "", "nothing in it could be read"},
      {"a.csv", "finished 5 0 0 0 0", "", "no row of Downscan; no row of three columns"},
      {"a.csv", "finished 5 0 0 0 0 0:3/2", "UseTyp=9", "tables hold no rows of 3D; Primary has 2 of 3"},
      {"a.csv", "finished 5 2 0 0 0", "", "no depth but 0"},
      {"a.csv", "finished 5 2 2 0 0", "", "no depth has a position"},
      {"a.log", "finished 5 0 0 0 0", "", "no $GPGGA with a $SDDBT behind it"},
      {"a.log", "finished 5 2 0 0 0", "", "no depth but 0"},
      {"a.log", "finished 5 2 2 0 0", "", "no position has a satellite fix"},
      {"a.log", "finished 5 2 2 2 0", "", "every sounding (2) fell to DistDiff = 1 m or DepthDiff = 10 cm"},
      {"a.mp", "finished 5 0 0 0 0", "", "no [POLYLINE] with Label and Data"}};
  for (const auto& [source, run, fields, line] : rows) {
    TestRun test;
    test.settings = {};
    test.Set(fields);
    EXPECT_EQ(WhyEmptyLine(ResultOf(run), test.settings, source, LangEnglish),
              line.empty() ? "" : "0 points: " + line);
  }
}

TEST(SourceNotes, TellWhatASourceHolds) {
  SampleFrame low = Frame(2, 20), blind = Frame(5, 0);
  low.Samples.resize(900);
  blind.TimeBase = 0;
  const auto sl2 = EchogramBytes(2, {Frame(2, 10), Frame(7, 0), low}), none = EchogramBytes(2, {});
  const std::string frames(sl2.begin(), sl2.end()), empty(none.begin(), none.end());
  const std::string head = "Channel,a,b,c,d,Depth\n", row = "Primary,1,2,3,4,30,6,7,8,9,10,1,2,0\n";
  const std::tuple<const char*, std::string, std::string> files[] = {
      {"a.sl2", frames,
       "a.sl2: 5.2 kB, 3 frames|Downscan: 2 frames, 2 with a depth, indices 0 to 1|channel 7: 1 frames, 0 "
       "with a depth, indices 0 to 0|2016-05-25 14:00:00 to 2016-05-25 14:00:01|depths 3.05 to 6.1 m|059"},
      {"b.sl2", empty, "b.sl2: 8 B, 0 frames|"},
      {"a.csv", head + row,
       "a.csv: table, 58 B, 2 lines|Primary: 1 rows, 1 with a depth|1 soundings seen|depths 9.14 to 9.14 "
       "m|259"},
      {"c.csv", "x,y,z\n1,2,3\n1,2,4\n",
       "c.csv: table of three columns, 18 B, 3 lines|2 soundings seen|depths 3 to 4 m|"},
      {"a.log", "$GPGGA\n", "a.log: log, 7 B, 1 lines|0 soundings seen|"},
      {"a.mp", "Label=7\n", "a.mp: map, 8 B, 1 lines|1 soundings seen|depths 7 to 7 m|"},
      {"a.SL2", frames, "the extension \".SL2\" is read as a table, it has to be \".sl2\"|"}};
  const TemporaryFolder folder;
  const auto notes = [](const std::string& path) {
    const SourceNotes found = NotesOn(path, LangEnglish);
    std::string text;
    for (const std::string& line : found.lines) text += line + '|';
    for (const Channel channel : found.missing) text += std::to_string(ChannelByte(channel));
    return text;
  };
  for (const auto& [name, bytes, told] : files) EXPECT_EQ(notes(folder.Write(name, bytes)), told);
  EXPECT_EQ(notes(folder.Path("none.sl2")), "none.sl2: can't be read|");
  EXPECT_EQ(notes(""), "");
  EXPECT_TRUE(notes(folder.Write("b.txt", std::string(1'049'950, ' '))).starts_with("b.txt: table, 1 MB, "));
}

}  // namespace
}  // namespace sondrix
