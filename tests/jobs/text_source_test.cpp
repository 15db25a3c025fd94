#include "jobs/text_source.h"

#include "jobs/text_run.h"

#include <algorithm>

namespace sondrix {
namespace {

TEST(TextSource, LinesInBlocksOfAnySize) {
  struct Row {
    std::string text;
    LineStart start;
    std::string lines;  // each with the last one that isn't empty as it stands at that moment: "line<last>"
  };
  TestRun test;
  for (const Row& row : std::vector<Row>{
           {"", LineStart::CutLf, ""},
           {"one\n\n\n\n\n\ntwo\n", LineStart::CutWithCr, "one<one><one><one><one><one><one>two<two><two>"},
           {"one\r\n\r\n\r\n\r\ntwo\r\n", LineStart::CutWithCr, "ne<ne><ne><ne><ne>two<two><two>"},
           {"one\r\n\r\n\n\ntwo\rthree", LineStart::CutLf, "one<one><one>\n\ntwo<\n\ntwo>three<three>"},
           {"abcab", LineStart::CutLf, "a<a>ca<ca><ca>"}}) {
    test.Source("a.txt", BytesOf(row.text));
    for (const std::size_t blockSize : {1, 2, 3, 5, 8, 100}) {
      TextSource source(test.settings.Source, row.start, blockSize);
      std::string lines;
      std::string_view last;
      while (const auto line = source.Next()) {
        if (!line->empty()) last = *line;
        lines.append(*line).append("<").append(last).append(">");
      }
      EXPECT_EQ(lines, row.lines) << row.text << blockSize;
      EXPECT_EQ(source.LineCount(), std::count(lines.begin(), lines.end(), '<'));
    }
  }
}

}  // namespace
}  // namespace sondrix
