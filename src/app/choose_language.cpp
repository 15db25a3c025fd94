#include "app/choose_language.h"

namespace sondrix {

LanguageChoice ChooseLanguage(std::string_view defLang, LangId systemLanguage) {
  const LangId stored = LangIdOf(defLang);
  const LangId wanted = stored != 0 ? stored : systemLanguage;
  for (const LanguageItem& item : LanguageItems) {
    if (item.id == wanted) return {item.name, item.id};
  }
  return {{}, wanted};
}

}  // namespace sondrix
