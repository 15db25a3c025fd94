#include "app/captions.h"

#include "core/code_page.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>

namespace sondrix {
namespace {

bool HasCyrillic(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return c == '\xD0' || c == '\xD1'; });
}

const CaptionRow& RowOf(std::string_view element, CaptionKind kind) {
  for (const CaptionRow& row : CaptionRows()) {
    if (row.element == element && row.kind == kind) return row;
  }
  ADD_FAILURE() << "no row of " << element;
  return CaptionRows().front();
}

// The tip of the rounding box stands on its label in German.
TEST(Captions, EveryLanguageHasThemAll) {
  std::set<std::pair<std::string_view, CaptionKind>> elements;
  int russian = 0, english = 0, german = 0;
  for (const CaptionRow& row : CaptionRows()) {
    EXPECT_TRUE(elements.emplace(row.element, row.kind).second) << row.element;
    russian += !row.russian.empty();
    english += !row.english.empty();
    german += !row.german.empty();
    const bool isRoundingTip = row.kind == CaptionKind::Tip && row.element.ends_with("UseDcm");
    EXPECT_EQ(row.russian.empty() || row.german.empty(), isRoundingTip) << row.element;
  }
  EXPECT_EQ(russian, 53);
  EXPECT_EQ(english, 53);
  EXPECT_EQ(german, 53);
}

TEST(Captions, LettersBelongToTheLanguage) {
  for (const CaptionRow& row : CaptionRows()) {
    EXPECT_EQ(ToCodePage(row.english), row.english);
    EXPECT_EQ(FromCodePage(ToCodePage(row.russian)), row.russian);
    EXPECT_TRUE(row.russian.empty() || HasCyrillic(row.russian)) << row.russian;
    EXPECT_FALSE(HasCyrillic(row.german)) << row.german;
    EXPECT_EQ(ToCodePage(row.german).find('?'), row.german.find('?')) << row.german;
  }
  EXPECT_EQ(HintHelpOf(LangGerman), " * Die Taste ??? ruft den Programmkurzübersicht auf");
}

TEST(Captions, TextsStandOnTheirElements) {
  using enum CaptionKind;
  const struct {
    const char* element;
    CaptionKind kind;
    LangId id;
    const char* text;
  } cases[] = {
      {"lblUseRev", Caption, LangRussian, "Датчик стоит задом наперед"},
      {"DucerX", Tip, LangGerman, "Steuerbord (nach rechts) / Backbord (nach links) (negative)"},
      {"lblUseDcm", Tip, LangGerman, "Tiefe auf Dezimeter statt Zentimeter Runden"},
      {"UseDcm", Tip, LangEnglish, "Round depth to decimeters instead of centimeters"},
      {"lblScanTo", Caption, LangEnglish, "to"},
      {"lblScanTo", Caption, 0x422, ""},
  };
  for (const auto& oneCase : cases) {
    EXPECT_EQ(TextOf(RowOf(oneCase.element, oneCase.kind), oneCase.id), oneCase.text) << oneCase.element;
  }
  EXPECT_EQ(HintHelpOf(LangEnglish), std::string(" * button '") + "???" + "' opens mini help file");
  EXPECT_EQ(HintHelpOf(0x422), "");
}

// The room beside a number field is narrow.
TEST(Captions, TranslationsAreShort) {
  for (const CaptionRow& row : CaptionRows()) {
    if (row.kind != CaptionKind::Caption) continue;
    EXPECT_LE(CharacterCount(row.russian), 45u) << row.russian;
    EXPECT_LE(CharacterCount(row.german), 45u) << row.german;
  }
}

}  // namespace
}  // namespace sondrix
