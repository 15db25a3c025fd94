#include "app/desktop/toolkit_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <algorithm>
#include <iterator>
#include <string_view>

namespace sondrix {
namespace {

struct Word {
  std::string_view english;
  const char *russian, *german;
};

// Of message boxes and file dialogs, as the toolkit asks for them: with a mark for the key and without.
constexpr Word Words[] = {
    {"&Yes", "&Да", "&Ja"},
    {"&No", "&Нет", "&Nein"},
    {"OK", "ОК", "OK"},
    {"&OK", "&ОК", "&OK"},
    {"Cancel", "Отмена", "Abbrechen"},
    {"&Cancel", "&Отмена", "&Abbrechen"},
    {"Open", "Открыть", "Öffnen"},
    {"&Open", "&Открыть", "Ö&ffnen"},
    {"Save", "Сохранить", "Speichern"},
    {"&Save", "&Сохранить", "&Speichern"},
    {"Save As", "Сохранить как", "Speichern unter"},
    {"Close", "Закрыть", "Schließen"},
    {"&Close", "&Закрыть", "S&chließen"},
    {"&Choose", "&Выбрать", "&Auswählen"},
    {"Look in:", "Папка:", "Suchen in:"},
    {"Directory:", "Папка:", "Ordner:"},
    {"File &name:", "&Имя файла:", "Datei&name:"},
    {"Files of type:", "Типы файлов:", "Dateien vom Typ:"},
    {"%1 already exists.\nDo you want to replace it?", "%1 уже существует.\nЗаменить?",
     "%1 existiert bereits.\nSoll die Datei ersetzt werden?"},
    {"Name", "Имя", "Name"},
    {"Size", "Размер", "Größe"},
    {"Type", "Тип", "Typ"},
    {"Date Modified", "Дата изменения", "Änderungsdatum"},
    {"Computer", "Компьютер", "Computer"},
};

constexpr std::string_view Contexts[] = {"QPlatformTheme", "QDialogButtonBox", "QMessageBox", "QFileDialog",
                                         "QFileSystemModel"};

}  // namespace

void ToolkitTexts::SetLanguage(LangId id) {
  if (id_ == id) return;
  id_ = id;
  QCoreApplication::removeTranslator(this);
  QCoreApplication::removeTranslator(&installed_);
  if (id == LangEnglish) return;  // the toolkit's own
  const QLocale locale(id == LangGerman ? QLocale::German : QLocale::Russian);
  if (installed_.load(locale, QLatin1String("qtbase"), QLatin1String("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&installed_);
  }
  QCoreApplication::installTranslator(this);
}

QString ToolkitTexts::translate(const char* context, const char* source, const char*, int) const {
  if (!source || std::ranges::find(Contexts, context) == std::end(Contexts)) return {};
  const auto* word = std::ranges::find(Words, source, &Word::english);
  if (word == std::end(Words)) return {};
  return QString::fromUtf8(id_ == LangGerman ? word->german : word->russian);
}

}  // namespace sondrix
