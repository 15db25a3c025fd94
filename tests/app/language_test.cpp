#include "app/language.h"

#include "app/captions.h"
#include "core/code_page.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <span>
#include <string_view>

namespace sondrix {
namespace {

// A table of messages is a run of string views with one number behind them.
std::span<const std::string_view> TextsOf(LangId id) {
  const Messages& messages = *MessagesOf(id);
  return {&messages.MsgBegin, &messages.TitleNoChannel + 1};
}

// The first characters tell the kind of a line: an error, an end, a progress, a word.
std::string_view KindOf(std::string_view text) {
  return text.substr(0, text.starts_with(" ! ") || text.starts_with(" * ") ? 3 : text.starts_with(' '));
}

// And each survives the way into a file of 8-bit characters.
TEST(Language, EveryTextIsThereInItsLettersAndOfOneKind) {
  const auto check = [](std::string_view english, std::string_view russian, std::string_view german) {
    EXPECT_FALSE(english.empty() || russian.empty() || german.empty()) << english;
    EXPECT_EQ(KindOf(russian), KindOf(english)) << russian;
    EXPECT_EQ(KindOf(german), KindOf(english)) << german;
    EXPECT_EQ(ToCodePage(english), english);
    EXPECT_EQ(FromCodePage(ToCodePage(russian)), russian);
    EXPECT_EQ(german.find_first_of("\xD0\xD1"), std::string_view::npos) << german;
    EXPECT_EQ(std::ranges::count(ToCodePage(german), '?'), std::ranges::count(german, '?')) << german;
  };
  const auto english = TextsOf(LangEnglish), russian = TextsOf(LangRussian), german = TextsOf(LangGerman);
  for (std::size_t i = 0; i < english.size(); ++i) check(english[i], russian[i], german[i]);
  for (const CaptionRow& row : CaptionRows()) {
    // In German this tip stands on the label, else on the box.
    const bool isSplit = row.kind == CaptionKind::Tip && row.element.ends_with("UseDcm");
    if (!isSplit) check(row.english, row.russian, row.german);
  }
}

}  // namespace
}  // namespace sondrix
