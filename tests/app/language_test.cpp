#include "app/language.h"

#include "app/captions.h"
#include "core/code_page.h"

#include <algorithm>
#include <gtest/gtest.h>

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
  const auto check = [](std::string_view english, std::string_view text) {
    EXPECT_FALSE(english.empty() || text.empty()) << english << text;
    EXPECT_EQ(KindOf(text), KindOf(english)) << text;
    EXPECT_EQ(std::ranges::count(ToCodePage(text), '?'), std::ranges::count(text, '?')) << text;
  };
  for (const LangId id : {LangEnglish, LangRussian, LangGerman})
    for (std::size_t i = 0; i < TextsOf(id).size(); ++i) check(TextsOf(LangEnglish)[i], TextsOf(id)[i]);
  for (const CaptionRow& row : CaptionRows()) {
    // In German this tip stands on the label, else on the box.
    if (row.kind == CaptionKind::Tip && row.element.ends_with("UseDcm")) continue;
    check(row.english, row.russian);
    check(row.english, row.german);
  }
}

}  // namespace
}  // namespace sondrix
