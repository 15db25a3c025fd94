#include "jobs/job_mp.h"

#include "jobs/line_input.h"
#include "test_run.h"

namespace sondrix {
namespace {

using namespace std::string_literals;

// A comment that brings the shortest map above the length that a head has.
const std::string Head = ";" + std::string(97, '-') + "\r\n";
const std::string Done = " point file with the coordinates of the polylines created successfully";
const std::string None = " * polylines with depths in the source file is not found";
const std::string NeedPolish = " * specify the source file in 'polish' format to continue";
const std::string NoList = "(no list)";

std::span<const std::uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

class MapRun : public TestRun {
 public:
  explicit MapRun(const std::string& map) { Source("lake.mp", BytesOf(map)); }
  std::string List() const {
    return std::filesystem::exists(folder / "lake.txt") ? ReadWhole((folder / "lake.txt").string()) : NoList;
  }
};

struct Row {
  std::string what, map, list, end;
  int beeps = 0;
};

void Check(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    MapRun test(row.map);
    JobMp(test.run);
    EXPECT_EQ(test.List(), row.list);
    EXPECT_EQ(test.window.att, row.end);
    EXPECT_EQ(test.window.beeps, row.beeps);
  }
}

TEST(JobMp, VerticesOfLabelledPolylines) {
  const std::string line = "[POLYLINE]\r\nLabel=5\r\nData0=(1,2),(3,4)\r\n[END]\r\n";
  const std::string list = "\r\n1,2,5\r\n3,4,5\r\n\r\n";
  Check({
      {"one line", Head + line, list, Done},
      {"names in any case and blanks around lines",
       Head + "  [pOlYlInE] \r\n LABEL=5 \r\n  DATA3=(1,2),(3,4)  ", list, Done},
      {"zero is an error value",
       Head + "[POLYLINE]\r\nLabel=0\r\nData0=(1,2)\r\nLabel=0.0\r\nData0=(1,2)\r\n",
       "\r\n1,2,-1\r\n\r\n1,2,0.0\r\n\r\n", Done},
      {"a label lasts until the next one", Head + line + "[POLYLINE]\r\nData0=(5,6)\r\n",
       list + "\r\n5,6,5\r\n\r\n", Done},
      {"a blank label passes its data over", Head + line + "[POLYLINE]\r\nLabel=\r\nData0=(5)\r\n",
       list + "\r\n", Done},
      {"two data lines", Head + "[POLYLINE]\r\nLabel=5\r\nData0=(1,2)\r\nData1=(3,4)\r\n",
       "\r\n1,2,5\r\n\r\n3,4,5\r\n\r\n", Done},
      {"points and areas end a line, END doesn't",
       Head + line +
           "Data0=(7,8)\r\n[POI]\r\nLabel=9\r\nData0=(9,9)\r\n[POLYGON]\r\nData0=(9,9)\r\n[POLYLINE\r\nData0="
           "(9,9)\r\n",
       list + "7,8,5\r\n\r\n", Done},
      {"texts stay as they are", Head + "[POLYLINE]\r\nLabel= \xC3\xEB.\xFF;5\r\nData0=( 1.50, x,7)\r\n",
       "\r\n 1.50, x,7, \xC3\xEB.\xFF;5\r\n\r\n", Done},
      {"no bracket to cut at", Head + "[POLYLINE]\r\nLabel=5\r\ndata1,2)\r\n", "\r\ndata1,2,5\r\n\r\n", Done},
      {"CR alone ends a line", Head + "[POLYLINE]\rLabel=5\rData0=(1,2),(3,4)\r", list, Done},
      {"LF alone does not",
       Head + "[POLYLINE]\r\nLabel=5\n\r\nData0=(1,2\n),(3,4)\r\n\n[POI]\r\nData0=(1,2)\r\n",
       "\r\n1,2\n,5\n\r\n3,4,5\n\r\n\r\n1,2,5\n\r\n\r\n", Done},
      {"NUL bytes", Head + "[POLYLINE]\r\n\0\r\nLabel=\0\r\nData0=(1,\0)\r\n"s, "\r\n1,\0,\0\r\n\r\n"s, Done},
      {"points only", Head + "[POI]\r\nLabel=5\r\nData0=(1,2)\r\n", NoList, None, 1},
      {"a line without data", Head + "[POLYLINE]\r\nLabel=5\r\n", NoList, None, 1},
  });
}

TEST(JobMp, FaultsKeepWhatWasConvertedBefore) {
  const std::string open = "[POLYLINE]\r\nLabel=5\r\n";
  for (const std::string bad : {"Data0=(3,4),(5)", "Data0=(", "Data0=()", "data"}) {
    const std::string partial = bad.starts_with("Data0=(3,4)") ? "3,4,5\r\n" : "";
    Check({{bad + " first", Head + open + bad + "\r\nData0=(1,2)\r\n", NoList, NeedPolish, 2},
           {bad + " later", Head + open + "Data0=(1,2)\r\n" + bad + "\r\n", "\r\n1,2,5\r\n\r\n" + partial,
            NeedPolish, 1}});
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
  struct Opening {
    std::string source, end;
  };
  for (const Opening& row :
       {Opening{source + ".mp", NeedPolish},
        {(test.folder / "none" / "lake.mp").string(), " ! error ReadShp: 76. Path not found"},
        {(test.folder / "out").string(), " ! error ReadShp: 75. Path/File access error"},
        {"mp", NeedPolish}}) {
    test.settings.Source = row.source;
    JobMp(test.run);
    EXPECT_EQ(test.window.att, row.end) << row.source;
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
