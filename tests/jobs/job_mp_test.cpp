#include "jobs/job_mp.h"

#include "jobs/line_input.h"
#include "jobs/text_run.h"

namespace sondrix {
namespace {

using namespace std::string_literals;

// A comment that brings the shortest map above the length that a head has.
const std::string Head = ";" + std::string(97, '-') + "\r\n";
const std::string Done = " point file with the coordinates of the polylines created successfully";
const std::string None = " * polylines with depths in the source file is not found";
const std::string NeedPolish = " * specify the source file in 'polish' format to continue";
const std::string NoList = "(no list)";

class MapRun : public TestRun {
 public:
  explicit MapRun(const std::string& map) { Source("lake.mp", BytesOf(map)); }
  std::string List() const {
    return std::filesystem::exists(folder / "lake.txt") ? ReadWhole((folder / "lake.txt").string()) : NoList;
  }
};

// | is a line end, and the head goes before the map.
struct Row {
  std::string what, map, list, end;
  int beeps = 0;
};

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    MapRun test(Head + WithLineEnd(row.map, '|', "\r\n"));
    JobMp(test.run);
    EXPECT_EQ(test.List(), WithLineEnd(row.list, '|', "\r\n"));
    EXPECT_EQ(test.window.att, row.end);
    EXPECT_EQ(test.window.beeps, row.beeps);
  }
}

TEST(JobMp, VerticesOfLabelledPolylines) {
  const std::string line = "[POLYLINE]|Label=5|Data0=(1,2),(3,4)|[END]|";
  const std::string list = "|1,2,5|3,4,5||";
  Check({{"one line", line, list, Done},
         {"names in any case and blanks around lines", "  [pOlYlInE] | LABEL=5 |  DATA3=(1,2),(3,4)  ", list,
          Done},
         {"zero is an error value", "[POLYLINE]|Label=0|Data0=(1,2)|Label=0.0|Data0=(1,2)|",
          "|1,2,-1||1,2,0.0||", Done},
         {"a label lasts until the next one", line + "[POLYLINE]|Data0=(5,6)|", list + "|5,6,5||", Done},
         {"a blank label passes its data over", line + "[POLYLINE]|Label=|Data0=(5)|", list + "|", Done},
         {"two data lines", "[POLYLINE]|Label=5|Data0=(1,2)|Data1=(3,4)|", "|1,2,5||3,4,5||", Done},
         {"points and areas end a line, END doesn't",
          line + "Data0=(7,8)|[POI]|Label=9|Data0=(9,9)|[POLYGON]|Data0=(9,9)|[POLYLINE|Data0=(9,9)|",
          list + "7,8,5||", Done},
         {"texts stay as they are", "[POLYLINE]|Label= \xC3\xEB.\xFF;5|Data0=( 1.50, x,7)|",
          "| 1.50, x,7, \xC3\xEB.\xFF;5||", Done},
         {"no bracket to cut at", "[POLYLINE]|Label=5|data1,2)|", "|data1,2,5||", Done},
         {"CR alone ends a line", "[POLYLINE]\rLabel=5\rData0=(1,2),(3,4)\r", list, Done},
         {"LF alone does not", "[POLYLINE]|Label=5\n|Data0=(1,2\n),(3,4)|\n[POI]|Data0=(1,2)|",
          "|1,2\n,5\n|3,4,5\n||1,2,5\n||", Done},
         {"NUL bytes", "[POLYLINE]|\0|Label=\0|Data0=(1,\0)|"s, "|1,\0,\0||"s, Done},
         {"points only", "[POI]|Label=5|Data0=(1,2)|", NoList, None, 1},
         {"a line without data", "[POLYLINE]|Label=5|", NoList, None, 1}});
}

TEST(JobMp, FaultsKeepWhatWasConvertedBefore) {
  const std::string open = "[POLYLINE]|Label=5|";
  for (const std::string bad : {"Data0=(3,4),(5)", "Data0=(", "Data0=()", "data"}) {
    const std::string partial = bad.starts_with("Data0=(3,4)") ? "3,4,5|" : "";
    std::string later = open;
    later.append("Data0=(1,2)|").append(bad).append("|");
    Check({{bad + " first", open + bad + "|Data0=(1,2)|", NoList, NeedPolish, 2},
           {bad + " later", later, "|1,2,5||" + partial, NeedPolish, 1}});
  }
}

TEST(JobMp, RefusalsLeaveAnEarlierListAlone) {
  const std::string unixEnds = " ! Unix newlines style are not supported";
  const std::string shortMap = " ! error ReadShp: 62. Input past end of file";
  for (const auto& [map, end] : {std::pair(std::string(200, '-') + "\r\n", unixEnds),
                                 {std::string(99, '-') + "\r\n", unixEnds},
                                 {std::string(50, '\n') + std::string(50, '\r') + "\n", unixEnds},
                                 {std::string(97, '-') + "\r\n", shortMap},
                                 {"", shortMap}}) {
    MapRun test(map);
    OutputFile((test.folder / "lake.txt").string()).Write("earlier");
    JobMp(test.run);
    EXPECT_EQ(test.window.att, end);
    EXPECT_EQ(test.window.beeps, 1);
    EXPECT_EQ(test.List(), "earlier");
  }
}

TEST(JobMp, FilesThatCantBeOpened) {
  MapRun test(Head);
  const std::string source = test.settings.Source;
  for (const auto& [name, end] :
       Ends{{source + ".mp", NeedPolish},
            {(test.folder / "none" / "lake.mp").string(), " ! error ReadShp: 76. Path not found"},
            {(test.folder / "out").string(), " ! error ReadShp: 75. Path/File access error"},
            {"mp", NeedPolish}}) {
    test.settings.Source = name;
    JobMp(test.run);
    EXPECT_EQ(test.window.att, end) << name;
  }
  test.settings.Source = source;
  std::filesystem::create_directories(test.folder / "lake.txt" / "kept");
  JobMp(test.run);
  EXPECT_EQ(test.window.att, " ! error ReadShp: 75. Path/File access error");
  EXPECT_TRUE(std::filesystem::exists(test.folder / "lake.txt" / "kept"));
}

TEST(JobMp, ALineOfFiftyMegabytes) {
  std::string map = Head + "[POLYLINE]\r\nLabel=5\r\nData0=(56.123456,37.123456)";
  while (map.size() < 50'000'000) map += ",(56.123456,37.123456)";
  const auto vertices = static_cast<std::size_t>(std::count(map.begin(), map.end(), '('));
  MapRun test(map + "\r\n");
  JobMp(test.run);
  EXPECT_EQ(test.window.att, Done);
  const std::string list = test.List();
  EXPECT_EQ(list.size(), vertices * std::string("56.123456,37.123456,5\r\n").size() + 4);
  EXPECT_TRUE(list.ends_with("\r\n56.123456,37.123456,5\r\n\r\n"));
}

TEST(LineInput, SeamsOfBlocksDontShow) {
  const std::string text = "\r\rab\r\n\r\n\ncd\n\r" + std::string(40, 'x') + "\r\r\nlast\n";
  const std::vector<std::string> lines = {"", "", "ab", "", "\ncd\n", std::string(40, 'x'), "", "last\n"};
  TestRun test;
  test.Source("lines", BytesOf(text));
  for (std::size_t block = 1; block <= text.size() + 1; ++block) {
    InputFile file(test.settings.Source);
    LineInput input(file, block);
    std::vector<std::string> read;
    while (const auto line = input.Next()) read.emplace_back(*line);
    EXPECT_EQ(read, lines) << "blocks of " << block;
  }
}

}  // namespace
}  // namespace sondrix
