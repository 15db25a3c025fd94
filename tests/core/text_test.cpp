#include "core/text.h"

#include "core/files.h"

#include <gtest/gtest.h>

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
  EXPECT_EQ(WithSeparator("ab") + WithSeparator("ab/") + WithSeparator("") + WithSeparator("ab", 2),
            std::string("ab") + PathSeparator + "ab/ab");
}

}  // namespace
}  // namespace sondrix
