#include "jobs/text_source.h"

#include "fault_in.h"
#include "jobs/text_run.h"

namespace sondrix {
namespace {

// The lines of a text, each with the last one that isn't empty as it stands at that moment: "line<last>".
std::string LinesOf(TestRun& test, const std::string& text, LineStart start, std::size_t blockSize) {
  test.Source("a.txt", BytesOf(text));
  TextSource source(test.settings.Source, start, blockSize);
  std::string lines;
  std::string_view last;
  std::int64_t count = 0;
  for (; const auto line = source.Next(); ++count) {
    if (!line->empty()) last = *line;
    lines.append(*line).append("<").append(last).append(">");
  }
  EXPECT_EQ(source.LineCount(), count);
  return lines;
}

TEST(TextSource, LinesInBlocksOfAnySize) {
  struct Row {
    std::string text;
    LineStart start;
    std::string lines;
  };
  const std::vector<Row> rows = {
      {"", LineStart::CutLf, ""},
      {"\n", LineStart::CutLf, "<><>"},
      {"one\ntwo", LineStart::CutWithCr, "one<one>two<two>"},
      {"one\n\n\n\n\n\ntwo\n", LineStart::CutWithCr, "one<one><one><one><one><one><one>two<two><two>"},
      {"one\r\n\r\n\r\n\r\ntwo\r\n", LineStart::CutWithCr, "ne<ne><ne><ne><ne>two<two><two>"},
      {"one\r\n\r\n\n\ntwo\rthree", LineStart::CutLf, "one<one><one>\n\ntwo<\n\ntwo>three<three>"},
      {"one\rtwo", LineStart::CutWithCr, "ne<ne>wo<wo>"},
      {"abcab", LineStart::CutLf, "a<a>ca<ca><ca>"},
      {std::string("a\0b\nc", 5), LineStart::CutLf, std::string("a\0b<a\0b>c<c>", 12)},
  };
  TestRun test;
  for (const Row& row : rows) {
    for (const std::size_t blockSize : {1, 2, 3, 5, 8, 100}) {
      EXPECT_EQ(LinesOf(test, row.text, row.start, blockSize), row.lines) << row.text << blockSize;
    }
  }
}

TEST(TextSource, AFileThatBecomesShorter) {
  TestRun test;
  const std::string text = "one\ntwo\nthree\n";
  test.Source("a.txt", BytesOf(text));
  TextSource source(test.settings.Source, LineStart::CutLf, 4);
  source.Next();
  std::filesystem::resize_file(test.settings.Source, 5);
  EXPECT_EQ(FaultIn([&] {
              while (source.Next()) {
              }
            }),
            62);
}

TEST(Columns, SplitAtEachSeparator) {
  const std::string line = "a;,bb;,;,0123456789;,;,last of all";
  Columns columns;
  columns.Split(line, ';', 16);
  EXPECT_EQ(columns.Count(), 6U);
  EXPECT_EQ(columns.At(3), ",0123456789");
  EXPECT_EQ(columns.At(5), ",last of all");
  EXPECT_EQ(FaultIn([&] { columns.At(6); }), 9);
  columns.Split(line, ',', 3);
  EXPECT_EQ(columns.Count(), 3U);
  EXPECT_EQ(columns.At(1), "bb;");
  // A byte next to the separator's value isn't one, also behind one that is.
  columns.Split(";:;<=;x", ';', 16);
  EXPECT_EQ(columns.Count(), 4U);
  EXPECT_EQ(columns.At(1), ":");
}

}  // namespace
}  // namespace sondrix
