#pragma once

#include "app/language.h"

#include <QTranslator>

namespace sondrix {

// What the toolkit's own dialogs say in a language of the window, Russian for a number without a table: from
// the toolkit's translations where they are installed, and in any case the words of the dialogs that the
// window shows.
class ToolkitTexts : public QTranslator {
 public:
  void SetLanguage(LangId id);

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* source, const char* comment, int n) const override;

 private:
  LangId id_ = 0;
  QTranslator installed_;
};

}  // namespace sondrix
