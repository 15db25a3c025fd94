#pragma once

#include "app/language.h"

namespace sondrix {

// The entries of the context menus, and the tip of a channel that a source lacks.
struct MenuTexts {
  const char *copyPicture, *savePicture, *openFolder, *notInSource;
};

// Of a language; Russian for a number without a table, as the window is built.
const MenuTexts& MenuTextsOf(LangId id);

}  // namespace sondrix
