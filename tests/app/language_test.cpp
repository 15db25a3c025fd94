#include "app/language.h"

#include "core/code_page.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

// All texts of a table, which is a run of string views with one number behind them.
std::vector<std::string_view> TextsOf(LangId id) {
  const Messages& messages = *MessagesOf(id);
  const std::string_view* first = &messages.MsgBegin;
  return {first, &messages.TitleNoChannel + 1};
}

constexpr LangId All[] = {LangRussian, LangEnglish, LangGerman};

TEST(Language, EveryTableHasEveryText) {
  for (const LangId id : All) {
    const auto texts = TextsOf(id);
    ASSERT_EQ(texts.size(), 43u);
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_FALSE(texts[i].empty()) << id << " row " << i;
  }
}

// The first characters tell the kind of a line, so they are the same in all languages.
TEST(Language, KindsOfLinesAgree) {
  const auto kindOf = [](std::string_view text) {
    const std::string_view start = text.substr(0, 3);
    return start == " ! " || start == " * " ? std::string(start)
                                            : std::string(text.substr(0, text[0] == ' '));
  };
  const auto english = TextsOf(LangEnglish);
  for (const LangId id : All) {
    const auto texts = TextsOf(id);
    for (std::size_t i = 0; i < texts.size(); ++i)
      EXPECT_EQ(kindOf(texts[i]), kindOf(english[i])) << texts[i];
  }
}

// Stored German is proper German, and every text survives the way into a file and out of it.
TEST(Language, LettersBelongToTheLanguage) {
  const auto hasCyrillic = [](std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c == '\xD0' || c == '\xD1'; });
  };
  for (const std::string_view text : TextsOf(LangGerman)) EXPECT_FALSE(hasCyrillic(text)) << text;
  for (const std::string_view text : TextsOf(LangEnglish)) EXPECT_EQ(ToCodePage(text), text);
  for (const std::string_view text : TextsOf(LangRussian)) EXPECT_EQ(FromCodePage(ToCodePage(text)), text);
  EXPECT_EQ(ToCodePage(MessagesOf(LangGerman)->MsgDone), " * Ausgef\xFChrt");
  EXPECT_EQ(MessagesOf(LangRussian)->MsgDone, " * выполнено");
}

TEST(Language, OtherLanguagesHaveNone) {
  for (const char* other : {"", "eng", "ENG ", "FRA"}) EXPECT_EQ(LangIdOf(other), 0) << other;
  for (const LangId other : {0, 0x422}) EXPECT_EQ(MessagesOf(other), nullptr);
}

}  // namespace
}  // namespace sondrix
