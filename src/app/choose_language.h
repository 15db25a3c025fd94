#pragma once

#include "app/language.h"

#include <string_view>

namespace sondrix {

// What the start decides: the item of boxLang, empty for none, and the number whose table is applied.
struct LanguageChoice {
  std::string_view item;
  LangId id = 0;
};

// The stored choice if it names an item, else the language of the system. A system language that no item has
// is kept as the number, without an item and without a table.
LanguageChoice ChooseLanguage(std::string_view defLang, LangId systemLanguage);

}  // namespace sondrix
