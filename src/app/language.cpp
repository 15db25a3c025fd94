#include "app/language.h"

namespace sondrix {
namespace {

using M = Messages;

struct Row {
  std::string_view Messages::*key;
  std::string_view english, russian, german;
};

constexpr Row Rows[] = {
    {&M::MsgBegin, " begin processing...", " начинаю обработку файла...", " Beginn der Datenverarbeitung..."},
    {&M::MsgNoSource, " * select source file...", " * не указан исходный файл...",
     " * Quelldatei ist nicht angegeben..."},
    {&M::MsgTargetDenied, " ! target folder access denied", " ! ошибка доступа к целевой папке...",
     " ! Zugrifffehler zum Zielordner..."},
    {&M::MsgBadConfig, " ! configuration file contains erroneous data",
     " ! файл конфигурации .ini содержит ошибочные данные",
     " ! Konfigurationsdatei .ini hat fehlerhafte Daten"},
    {&M::FilterSource, "File CSV/LOG/TXT or SL2/SL3,*.CSV;*.LOG;*.TXT;*.SL2;*.SL3;*.MP",
     "Файл CSV/LOG/TXT или SL2/SL3,*.CSV;*.LOG;*.TXT;*.SL2;*.SL3;*.MP",
     "Datei CSV/LOG/TXT oder SL2/SL3,*.CSV;*.LOG;*.TXT;*.SL2;*.SL3;*.MP"},
    {&M::TitleFolder, "Select target folder:", "Выберите папку для сохранения файлов:",
     "Den Ordner für die Dateiabspeicherung wählen:"},
    {&M::MsgUnixNewlines, " ! Unix newlines style are not supported",
     " ! линуксовый перевод строк не поддерживается...", " ! Linux-Zeilenvorschub wird nicht unterstützt.."},
    {&M::MsgPolyDone, " point file with the coordinates of the polylines created successfully",
     " файл точек с координатами из полилиний успешно создан",
     " Punktedatei mit den Koordinaten aus Polylinien wurde erfolgreich erstellt"},
    {&M::MsgPolyNone, " * polylines with depths in the source file is not found",
     " * полилиний с глубинами в исходном файле не найдено",
     " * Es wurden keine Polylinien mit den Tiefenangaben in der Quellsdatei gefunden"},
    {&M::MsgNeedPolish, " * specify the source file in 'polish' format to continue",
     " * для продолжения работы укажите исходный файл в польском",
     " * Zum Fortfahren die Quelldatei im MP-Format angeben"},
    {&M::MsgFileBusy, " ! file in use by another application, can't read attributes",
     " ! файл занят другим приложением, чтение атрибутов невозможно",
     " ! Datei von einer anderen Anwendung besetzt, Ablesen der Attribute nicht möglich"},
    {&M::MsgNoDelimiter, " ! source file without delimiters ';' or ','...",
     " ! исходный файл без разделителей ';' или ','...", " ! Quellsdatei ohne Trennzeichen ';' oder ','..."},
    {&M::MsgFilesDone, " files successfully created, selected points ",
     " файлы успешно созданы, выбрано точек ", " Dateien erfolgreich erstellt, ... Punkte gewählt"},
    {&M::MsgAborted, " * processing aborted by user", " * обработка прервана пользователем",
     " * Datenverarbeitung durch den Nutzer abgebrochen"},
    {&M::MsgLogCorrupt, " ! log-file is corrupted, there are missing or incomplete lines",
     " ! лог-файл поврежден, есть пропуски или неполные строки",
     " ! Log-Datei beschädigt, lückenhaft oder hat unvollständige Zeilen"},
    {&M::HeadCsv, "Longitude;Latitude;Depth,m;Offset,m;Satellite,pc;HDOP,m",
     "Долгота;Широта;Глубина,м;Смещение,м;Спутники,шт;Точность HDOP,м",
     "Länge,Breite,Tiefe,m;Abweichung,m;Satelliten,Stk.;Genauigkeit HDOP,m"},
    {&M::ReasonDistance, "distance beetween dots ", "интервал соседних точек ",
     "Intervall zwischen 2 Nachbarpunkten "},
    {&M::ReasonNoSats, "sattelites missing", "потеряны спутники", "Satelliten verloren"},
    {&M::ReasonSats, "ammout of sattelites ", "количество спутников ", "Satellitenanzahl "},
    {&M::ReasonZeroDepth, "zero depth", "нулевая глубина", "Nulltiefe"},
    {&M::WordDot, "dot", "точка", "Punkt"},
    {&M::WordLine, "line", "строка", "Zeile"},
    {&M::WordInLine, " in line ", " в строке ", " in der Zeile "},
    {&M::WordLines, " lines", " строк", " Zeilen"},
    {&M::WordFrom, " from ", " из ", " von "},
    {&M::MsgBadInterval, " ! selected interval # is incorrect...", " ! интервал обработки некорректный...",
     " ! Intervall der Datenverarbeiung nicht korrekt..."},
    {&M::MsgStopped, " * process stopped", " * обработка прекращена",
     " * Datenverarbeitung wurde eingestellt"},
    {&M::Msg3dInSl2, " ! 3D channel is not supported in SL2...",
     " ! 3D канал не поддерживается форматом SL2...", " ! 3D-Kanal nicht vom SL2-Format unterstützt..."},
    {&M::MsgEchoFolder, " ! error creating target folder...", " ! ошибка создания папки для эхограмм...",
     " ! Fehler beim Echogrammordnererstellung.."},
    {&M::MsgDone, " * done", " * выполнено", " * Ausgeführt"},
    {&M::MsgLogError, " ! log-file error ", " ! сбой лога ", " ! Log-Fehler"},
    {&M::MsgSkipScan, " skip scan # ", " пропуск снимка ", " Bildübergang"},
    {&M::WordOffset, "offset ", "оффсет ", "Offset "},
    {&M::WordScan, " scan ", " скан ", " Scan "},
    {&M::WordFish, " fish?", " рыба?", " Fisch?"},
    {&M::WordKmh, " km/h ", " км/ч ", " km/h "},
    {&M::MsgLoadMap, "Load relevant map in OziExplorer", "Загрузите подходящую карту в Ози",
     "Die passende Karte in Ozi laden"},
    {&M::MsgOffMap, "Point is not on the map", "Точка не находится на карте",
     "Der Punkt ist nicht auf der Karte"},
    {&M::WordDucer, "Ducer", "Датчик", "Geber"},
    {&M::MsgRunOzi, " ! run OziExplorer and load appropriate target map",
     " ! запустите OziExplorer и загрузите карту требуемого района",
     " ! OziExplorer starten und die notwendige Karte laden"},
    {&M::MsgCopyApi, " ! copy oziapi.dll in the program folder or system directory",
     " ! перепишите файл oziapi.dll в папку с программой или в системный каталог",
     " ! Die Datei oziapi.dll in den Programmordner oder Systemkatalog umspeichern"},
    {&M::AskNoChannel, "No frame of {0} before scan {1}, which is {2}% of the file. Go on to the next scan?",
     "До снимка {1} ({2}% файла) нет ни одного снимка канала {0}. Перейти к следующему?",
     "Vor Bild {1} ({2}% der Datei) gibt es kein Bild des Kanals {0}. Weiter zum nächsten Bild?"},
    {&M::TitleNoChannel, "Channel not found", "Канал не найден", "Kanal nicht gefunden"},
};

constexpr Messages TableOf(std::string_view Row::*language, int ducerLabelShift) {
  Messages messages;
  for (const Row& row : Rows) messages.*row.key = row.*language;
  messages.DucerLabelShift = ducerLabelShift;
  return messages;
}

constexpr Messages Russian = TableOf(&Row::russian, -95);
constexpr Messages English = TableOf(&Row::english, -70);
constexpr Messages German = TableOf(&Row::german, -95);

}  // namespace

LangId LangIdOf(std::string_view item) {
  for (const LanguageItem& known : LanguageItems) {
    if (known.name == item) return known.id;
  }
  return 0;
}

const Messages* MessagesOf(LangId id) {
  switch (id) {
    case LangRussian:
      return &Russian;
    case LangEnglish:
      return &English;
    case LangGerman:
      return &German;
    default:
      return nullptr;
  }
}

}  // namespace sondrix
