#include "jobs/text_run.h"
#include "samples/polish_map.h"

namespace sondrix {
namespace {

using namespace std::string_literals;

// A comment that brings the shortest map above the length that a head has.
const std::string Head = ";" + std::string(97, '-') + "\r\n";
const std::string Done = " point file with the coordinates of the polylines created successfully";
const std::string None = " * polylines with depths in the source file is not found";
const std::string NeedPolish = " * specify the source file in 'polish' format to continue";
const std::string NoList = "(no list)";

std::string ListOf(const TestRun& test) {
  const std::string path = (test.folder / "lake.txt").string();
  return std::filesystem::exists(path) ? ReadWhole(path) : NoList;
}

// | is a line end, and the head goes before the map.
TEST(JobMp, VerticesOfLabelledPolylines) {
  struct Row {
    std::string map, list, end = Done;
    int beeps = 0;
  };
  const std::string line = "[POLYLINE]|Label=5|Data0=(1,2),(3,4)|[END]|";
  const std::string list = "|1,2,5|3,4,5||", open = "[POLYLINE]|Label=5|";
  const std::vector<Row> rows = {
      {"  [pOlYlInE] | LABEL=5 |  DATA3=(1,2),(3,4)  ", list},
      {"[POLYLINE]|Label=0|Data0=(1,2)|Label=0.0|Data0=(1,2)|", "|1,2,-1||1,2,0.0||"},
      // A label lasts until the next one; a blank one passes its data over.
      {line + "[POLYLINE]|Data0=(5,6)|[POLYLINE]|Label=|Data0=(5)|", list + "|5,6,5|||"},
      // Points and areas end a line, END doesn't.
      {line + "Data0=(7,8)|[POI]|Label=9|Data0=(9,9)|[POLYGON]|Data0=(9,9)|[POLYLINE|Data0=(9,9)|",
       list + "7,8,5||"},
      {"[POLYLINE]|Label= \xC3\xEB.\xFF;5|Data0=( 1.50, x,7)|", "| 1.50, x,7, \xC3\xEB.\xFF;5||"},
      {"[POLYLINE]|Label=5|data1,2)|", "|data1,2,5||"},
      {"[POLYLINE]\rLabel=5\rData0=(1,2),(3,4)\r", list},
      {"[POLYLINE]|Label=5\n|Data0=(1,2\n),(3,4)|\n[POI]|Data0=(1,2)|", "|1,2\n,5\n|3,4,5\n||1,2,5\n||"},
      {"[POLYLINE]|\0|Label=\0|Data0=(1,\0)|"s, "|1,\0,\0||"s},
      {"[POI]|Label=5|Data0=(1,2)|", NoList, None, 1},
      {open, NoList, None, 1},
      // What came before a vertex that is too short is kept.
      {open + "Data0=(1,2),(3)|Data0=(1,2)|", NoList, NeedPolish, 2},
      {open + "Data0=(1,2)|Data0=(3,4),(5)|", "|1,2,5||3,4,5|", NeedPolish, 1},
      {open + "Data0=(1,2)|Data0=(|", "|1,2,5||", NeedPolish, 1}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.map);
    TextRun test;
    EXPECT_EQ(test.ClickOn("lake.mp", Head + WithLineEnd(row.map, '|', "\r\n")), row.end);
    EXPECT_EQ(ListOf(test), WithLineEnd(row.list, '|', "\r\n"));
    EXPECT_EQ(test.window.beeps, row.beeps);
  }
}

TEST(JobMp, RefusalsLeaveAnEarlierListAlone) {
  const std::string unixEnds = " ! Unix newlines style are not supported";
  const std::string shortMap = " ! error ReadShp: 62. Input past end of file";
  TextRun test;
  const std::string list = (test.folder / "lake.txt").string();
  OutputFile(list).Write("earlier");
  for (const auto& [map, end] : {std::pair(std::string(99, '-') + "\r\n", unixEnds),
                                 {std::string(50, '\n') + std::string(50, '\r') + "\n", unixEnds},
                                 {std::string(97, '-') + "\r\n", shortMap}}) {
    EXPECT_EQ(test.ClickOn("lake.mp", map), end);
    EXPECT_EQ(ListOf(test), "earlier");
  }
  EXPECT_EQ(test.window.beeps, 3);
  std::filesystem::remove(test.settings.Source);
  EXPECT_EQ(test.Click(), NeedPolish);
  EXPECT_EQ(ListOf(test), "earlier");
  std::filesystem::remove(list);
  std::filesystem::create_directories(std::filesystem::path(list) / "kept");
  EXPECT_EQ(test.ClickOn("lake.mp", Head), " ! error ReadShp: 75. Path/File access error");
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(list) / "kept"));
}

TEST(JobMp, AMapOfManyBlocks) {
  TextRun test;
  test.Source("lake.mp", {});
  ASSERT_TRUE(WritePolishMap(test.settings.Source, 1'000'000));
  EXPECT_EQ(test.Click(), Done);
  EXPECT_TRUE(HasDigest(test.Record() + ListOf(test), 0x90384DD0CE9C05EE));
}

}  // namespace
}  // namespace sondrix
