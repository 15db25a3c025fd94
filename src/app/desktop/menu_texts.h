#pragma once

#include "app/language.h"

namespace sondrix {

// The entries of the context menus.
struct MenuTexts {
  const char *copyPicture, *savePicture, *openFolder;
};

// Of a language; Russian for a number without a table, as the window is built.
const MenuTexts& MenuTextsOf(LangId id);

}  // namespace sondrix
