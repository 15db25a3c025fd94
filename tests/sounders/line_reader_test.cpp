#include "sounders/common/line_reader.h"

#include "core/fault.h"
#include "sounders/common/reading.h"
#include "temporary_folder.h"

namespace sondrix {
namespace {

// The lines, each ended by "|".
std::string LinesOf(LineReader& reader) {
  std::string lines;
  while (const auto line = reader.Next()) lines.append(*line).append("|");
  return lines;
}

TEST(LineReader, EndsOfAnyKindInBlocksOfAnySize) {
  struct Row {
    std::string_view text, lines;
    bool isCut;
  };
  const TemporaryFolder folder;
  const ReadWatch watch;
  for (const Row& row : {Row{"", "", false}, Row{"\n", "|", false}, Row{"one\n\ntwo\n", "one||two|", false},
                         Row{"one\r\n\r\ntwo\r\nthree", "one||two|three|", true},
                         Row{"one\rtwo\r\rthree\r", "one|two||three|", false},
                         Row{"a\r\nb\nc\rd\n\re", "a|b|c|d||e|", true}}) {
    const std::string path = folder.Write("lines", row.text);
    for (const std::size_t blockSize : {1, 2, 3, 5, 100}) {
      LineReader reader(path, watch, blockSize);
      EXPECT_EQ(LinesOf(reader), row.lines) << row.text << blockSize;
      EXPECT_EQ(reader.IsCut(), false);
      LineReader again(path, watch, blockSize);
      bool isCut = false;
      while (again.Next()) isCut = again.IsCut();
      EXPECT_EQ(isCut, row.isCut) << row.text << blockSize;
    }
  }
}

TEST(LineReader, LongLinesArePassedOver) {
  const TemporaryFolder folder;
  const std::string longLine(LineReader::MaxLine + 2 * LineReader::DefaultBlock, 'x');
  struct Row {
    std::string text, lines;
    std::uint64_t longLines;
  };
  for (const Row& row : {Row{"a\n" + longLine + "\nb\n", "a|b|", 1}, Row{longLine, "", 1},
                         Row{longLine + "\r\n" + longLine + "\r\nb", "b|", 2}}) {
    std::atomic<std::int64_t> read = 0;
    const ReadWatch watch = {.isToEnd = {}, .read = &read};
    LineReader reader(folder.Write("long", row.text), watch);
    EXPECT_EQ(LinesOf(reader), row.lines);
    EXPECT_EQ(reader.LongLines(), row.longLines);
    EXPECT_EQ(read, static_cast<std::int64_t>(row.text.size()));
  }
}

TEST(LineReader, AFileThatChangesAndAnEndThatIsAskedFor) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("log", "one\ntwo\nthree\n");
  bool isToEnd = false;
  const ReadWatch watch = {.isToEnd = [&] { return isToEnd; }};
  LineReader cut(path, watch, 4), grown(path, watch, 4), ended(path, watch, 4);
  for (LineReader* reader : {&cut, &grown, &ended}) ASSERT_EQ(reader->Next(), "one");
  std::filesystem::resize_file(path, 20);
  EXPECT_THROW(LinesOf(grown), ChangedMeanwhile);
  std::filesystem::resize_file(path, 5);
  EXPECT_THROW(LinesOf(cut), Fault);
  isToEnd = true;
  EXPECT_THROW(LinesOf(ended), EndAsked);
}

}  // namespace
}  // namespace sondrix
