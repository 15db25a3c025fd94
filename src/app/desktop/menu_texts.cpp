#include "app/desktop/menu_texts.h"

namespace sondrix {
namespace {

constexpr MenuTexts English = {"Copy the picture", "Save the picture as...", "Open the output folder",
                               "Not in this source"};
constexpr MenuTexts Russian = {"Скопировать картинку", "Сохранить картинку как...",
                               "Открыть папку с результатами", "В этом файле нет"};
constexpr MenuTexts German = {"Bild kopieren", "Bild speichern unter...", "Ausgabeordner öffnen",
                              "Nicht in dieser Datei"};

}  // namespace

const MenuTexts& MenuTextsOf(LangId id) {
  if (id == LangEnglish) return English;
  return id == LangGerman ? German : Russian;
}

}  // namespace sondrix
