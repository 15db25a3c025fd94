#include "core/text.h"

#include "core/code_page.h"
#include "core/files.h"
#include "digest.h"

namespace sondrix {
namespace {

TEST(Text, LettersBlanksPatternsAndPaths) {
  std::string lower;
  for (const char c : std::string_view("@AMZ[az-\xC0")) lower += Lower(c);
  EXPECT_EQ(lower, "@amz[az-\xC0");
  EXPECT_EQ(Trimmed("  a b "), "a b");
  EXPECT_EQ(Trimmed(" \t", " \t"), "");
  EXPECT_EQ(Filled("{1}{0}-{1}{2}.", {"a", "b"}), "ba-b.");
  EXPECT_EQ(FileNameOf("a/b.c"), "b.c");
  EXPECT_EQ(FileNameOf("a/"), "");
  EXPECT_EQ(FileNameOf("a"), "a");
  EXPECT_EQ(WithSeparator("ab") + WithSeparator("ab/") + WithSeparator("") + WithSeparator("яя", 2),
            std::string("ab") + PathSeparator + "ab/яя");
}

TEST(CodePage, EveryByteSurvivesTheWayThere) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(ToCodePage(FromCodePage(bytes)), bytes);
  EXPECT_TRUE(HasDigest(FromCodePage(bytes), 0xB8FB9938A8961325));
}

TEST(CodePage, WritesLettersOfBothPages) {
  const char* const rows[][2] = {
      {"Глубина ё №", "\xC3\xEB\xF3\xE1\xE8\xED\xE0 \xB8 \xB9"},
      {"Šœéß€„“", "\x8A\x9C\xE9\xDF\x88\x84\x93"},
      {"×½水😀", "????"},
      {"a\xFFz\xE2\x82", "a?z??"},
      {"\xC0\x80\xE0\x83\xA9\xED\xA0\x80\xF4\x90\x80\x80", "????????????"},  // overlong, surrogate, too large
  };
  for (const auto& row : rows) EXPECT_EQ(ToCodePage(row[0]), row[1]) << row[0];
  // Three bytes, then a fourth: sound characters and broken ones of each length.
  std::string all;
  for (int first = 0x7F; first < 0x100; ++first) {
    for (int second = 0x7F; second <= 0xC0; ++second) {
      for (const int third : {0x7F, 0x80, 0x94, 0x9E, 0xA0, 0xBF, 0xC0}) {
        const std::string text = {char(first), char(second), char(third), char(0x80 + first % 4), 'z'};
        all += ToCodePage(text) + std::to_string(CharacterCount(text));
        all += ToCodePage(FromCharacter(text, 2)) + '\n';
      }
    }
  }
  EXPECT_TRUE(HasDigest(all, 0xFEA7262BA702293C));
}

}  // namespace
}  // namespace sondrix
