#include "jobs/text_source.h"

#include "fault_in.h"
#include "jobs/line_input.h"
#include "jobs/text_body.h"
#include "jobs/text_run.h"

#include <chrono>

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

// The lines were counted, and then other ones of the same length stand there.
TEST(TextSource, ASourceThatChangesInPlace) {
  for (const char* later : {"1x22x333x4444x5", "1234567\n\n\n\n5555", "\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n",
                            "1\n22\n333\n4444x5", "1\n22\n333\n4444\n\n"}) {
    for (const std::size_t blockSize : {1, 4, 100}) {
      TestRun test;
      test.Source("a.txt", BytesOf("1\n22\n333\n4444\n5"));
      TextSource source(test.settings.Source, LineStart::CutLf, blockSize);
      test.Source("a.txt", BytesOf(later));
      const auto read = [&source] {
        while (source.Next())
          ;
      };
      EXPECT_EQ(FaultIn(read), 57) << later << blockSize;
    }
  }
}

// What has the same lines counts by the time of its change.
TEST(TextSource, ASourceThatIsWrittenMeanwhile) {
  for (const bool isWritten : {false, true}) {
    TestRun test;
    test.Source("a.txt", BytesOf("1\r\n2\r\n"));
    TextSource source(test.settings.Source, LineStart::CutLf);
    InputFile file(test.settings.Source);
    LineInput lines(file, 1);
    EXPECT_EQ(lines.Next(), "1");
    const std::filesystem::path path = test.settings.Source;
    if (isWritten) last_write_time(path, last_write_time(path) + std::chrono::seconds(1));
    EXPECT_EQ(lines.Next(), "2");
    EXPECT_EQ(FaultIn([&] { lines.Next(); }), isWritten ? 57 : 0);
    EXPECT_EQ(FaultIn([&] { source.Finish(); }), isWritten ? 57 : 0);
  }
}

// A table without a line end is asked about before each block, in both passes.
TEST(TextSource, ASourceThatIsntReadToItsEnd) {
  TestRun test;
  test.Source("a.txt", BytesOf("12345678"));
  for (const int reads : {0, 3, 4, 5}) {
    int asked = 0;
    std::optional<TextSource> source;
    const auto read = [&] {
      source.emplace(test.settings.Source, LineStart::CutLf, 4, [&] { return ++asked > reads; });
      while (source->Next())
        ;
    };
    EXPECT_THROW(read(), EndAsked) << reads;
    EXPECT_EQ(source.has_value(), reads > 3);
  }
}

TEST(TextBody, GrowsInPieces) {
  TextBody body;
  std::string all;
  EXPECT_TRUE(body.IsEmpty() && body.Parts().empty());
  for (std::size_t size = 1; size < 40'000'000; size *= 3) {
    const std::string record(size, static_cast<char>('a' + size % 26));
    body.Add(record);
    all += record;
  }
  std::string held;
  for (const std::string_view part : body.Parts()) held += part;
  EXPECT_TRUE(held == all && !body.IsEmpty());
}

}  // namespace
}  // namespace sondrix
