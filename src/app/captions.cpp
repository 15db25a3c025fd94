#include "app/captions.h"

namespace sondrix {
namespace {

using enum CaptionKind;

// The slips of some English texts are part of them, as in the message table.
constexpr CaptionRow Rows[] = {
    {"btnHelp", Tip, "What is this?", "Что это такое?", "Was ist das?"},
    {"btnGO", Tip, "Start processing", "Начать обработку", "Verarbeitung starten"},
    {"RunSet", Tip, "Pause/resume processing", "Приостановить/продолжить обработку",
     "Verarbeitung anhalten/fortsetzen"},
    {"RunEnd", Tip, "Stop processing", "Прекратить обработку", "Verarbeitung abbrechen"},
    {"lblEhoSens", Caption, "contrast", "контраст", "Kontrast"},
    {"lblEhoSens", Tip, "Echogram contrast", "Контраст эхограммы", "Kontrast des Echogramms"},
    {"MakeScrn", Tip, "Save current graph to a file", "Сохранить текущий график в файл",
     "Aktuelle Kurve in eine Datei speichern"},
    {"WPT", Tip, "Save the waypoint with relief", "Сохранить путевую точку с рельефом",
     "Wegpunkt mit Relief speichern"},
    {"WPF", Tip, "Save the waypoint with fish", "Сохранить путевую точку с рыбой",
     "Wegpunkt mit Fisch speichern"},
    {"FrmSize", Tip, "Hide/show settings panel", "Скрыть/показать панель настроек",
     "Einstellungen aus-/einblenden"},
    {"lblSource", Caption, "Source file in formats CSV / LOG or SL2 / SL3",
     "Исходный файл CSV / LOG или SL2 / SL3", "Quelldatei im Format CSV / LOG oder SL2 / SL3"},
    {"btnSource", Tip, "Select source file", "Выбрать исходный файл", "Quelldatei wählen"},
    {"lblTargetPath", Caption, "Path for output files in formats TXT, CSV, MP, PLT, WPT",
     "Папка для файлов TXT, CSV, MP, PLT, WPT", "Zielordner für TXT, CSV, MP, PLT, WPT"},
    {"btnTargetPath", Tip, "Select target path", "Выбрать папку для сохранения файлов", "Zielordner wählen"},
    {"lblTargetName", Caption, "Name of target files (blank for auto name)",
     "Имя файлов (пусто - автоматически)", "Name der Dateien (leer = automatisch)"},
    {"lblDepthMP", Caption, "POI type in .MP file (0x1000 by default)", "Тип POI в файле .MP (обычно 0x1000)",
     "POI-Typ in der .MP-Datei (sonst 0x1000)"},
    {"lblMaxDiff", Caption, "Max distance between too distant points, m", "Макс. расстояние между точками, м",
     "Größter Punktabstand, m"},
    {"lblDistDiff", Caption, "Minimum distance between neighboring points, m",
     "Мин. расстояние между точками, м", "Kleinster Punktabstand, m"},
    {"lblDepthDiff", Caption, "Minimum difference between the depth measurements, cm",
     "Мин. разница соседних глубин, см", "Kleinster Tiefenunterschied, cm"},
    {"lblDepthSm", Caption, "Depth adjustment (can be negative), cm", "Поправка глубины (и с минусом), см",
     "Tiefenkorrektur (auch negativ), cm"},
    {"lblDefLvl", Caption, "Threshold difference of the calculated depth, cm",
     "Порог разницы расчетной глубины, см", "Grenzdifferenz der berechneten Tiefe, cm"},
    {"lblDefSlp", Caption, "Pause on the defect / scrolling speed, ms", "Пауза на дефекте / прокрутка, мс",
     "Pause bei Fehler / Bildlauf, ms"},
    {"lblScanSkip", Caption, "Begin processing from scan", "Обработка со снимка", "Auswertung vom Bild Nr."},
    {"lblScanTo", Caption, "to", "по", "bis"},
    {"lblMakeCut", Caption, "Crop target echogram by selected #", "Обрезать эхограмму по номерам",
     "Echogramm nach Bildnummern kürzen"},
    {"lblHideCut", Caption, "Remove coordinates in the target echogram", "Убрать координаты из эхограммы",
     "Koordinaten im Echogramm löschen"},
    {"lblSaveGraf", Caption, "Automatically save 'faulty' graphs",
     "Автоматически сохранять 'дефектные' графики", "'Fehlerhafte' Kurven automatisch speichern"},
    {"lblUseBeep", Caption, "Beep on graphs with 'fish'", "Сигнал на графиках с 'рыбой'",
     "Signalton bei Kurven mit 'Fisch'"},
    {"lblUseDcm", Caption, "Rounding depth to decimeters", "Округлять до дециметров",
     "Tiefe auf Dezimeter runden"},
    {"UseDcm", Tip, "Round depth to decimeters instead of centimeters",
     "Округлять глубину до дециметров вместо сантиметров", ""},
    {"lblUseDcm", Tip, "", "", "Tiefe auf Dezimeter statt Zentimeter Runden"},
    {"lblUseMet", Caption, "to meters", "в метры", "in Meter"},
    {"lblUseTyp", Caption, "Channel / ducer", "Канал / датчик", "Kanal / Geber"},
    {"METR", Tip, "Depth scale", "Шкала глубины", "Tiefenskala"},
    {"lblCrsHed", Caption, "Course/ Heading", "Трек/ Курс", "Strecke/ Richtung"},
    {"CRS", Tip, "Cource direction from the passed track", "Направление по пройденному треку",
     "Fahrtrichtung aus der zurückgelegten Strecke"},
    {"HED", Tip, "Heading of the boat according to the magnetic antenna", "Курс лодки по магнитной антенне",
     "Richtung des Bootes nach der Magnetantenne"},
    {"lblMaxGrad", Caption, "Limit changing of rotation angle, grad", "Предел угла поворота, град",
     "Grenze der Drehwinkeländerung, Grad"},
    {"lblMaxSide", Caption, "Limit sidescan distance from boat, m or %", "Предел бокового обзора, м или %",
     "Grenze der Seitenabtastung, m oder %"},
    {"MaxGrad", Tip, "Max change of direction to save 3D", "Макс. изменение направления для записи 3D",
     "Größte Richtungsänderung zum Speichern von 3D"},
    {"MaxSide", Tip, "Max sidescan distance to save 3D", "Макс. дальность бокового обзора для записи 3D",
     "Größter Seitenabstand zum Speichern von 3D"},
    {"MaxProc", Tip, "Sidescan distance to save 3D in percent",
     "Дальность бокового обзора для записи 3D в процентах", "Seitenabstand zum Speichern von 3D in Prozent"},
    {"lblDucerX", Caption, "Transducer relative to GPS antenna, cm", "Датчик от антенны GPS, см",
     "Geber relativ zur GPS-Antenne, cm"},
    {"DucerX", Tip, "Starboard / Port (negative)", "Правее / левее (в минус)",
     "Steuerbord (nach rechts) / Backbord (nach links) (negative)"},
    {"DucerY", Tip, "After / Forvard (negative)\nAhead of the antenna is positive",
     "Впереди / позади (в минус)\nВпереди антенны - плюс",
     "Vorn (bugwärts) / hinten (heckwärts) (negativ)\nVor der Antenne ist positiv"},
    {"lblUseRev", Caption, "Swap left/right sidescan", "Датчик стоит задом наперед",
     "Geber ist verkehrt montiert"},
    {"lblUseHead", Caption, "Use Heading", "Брать курс", "Richtung nutzen"},
    {"UseHead", Tip, "Use angular Heading data instead of Cource",
     "Брать углы из курса (Heading), а не из трека",
     "Winkel aus der Richtung (Heading) statt aus der Strecke"},
    {"lblUseXYZ", Caption, "Output order XYZ instead of YXZ", "Вывод в порядке XYZ вместо YXZ",
     "Ausgabe als XYZ statt YXZ"},
    {"lblUseUTM", Caption, "Output in UTM", "Вывод в UTM", "Ausgabe in UTM"},
    {"UseUTM", Tip, "Output in WGS84 UTM order format XYZ", "Вывод в WGS84 UTM в порядке XYZ",
     "Ausgabe in WGS84 UTM, Reihenfolge XYZ"},
    {"lblUseRad", Caption, "Track Course = Heading", "Трек = Курс", "Strecke = Richtung"},
    {"lblMakeGraf", Caption, "Display graphs of echograms", "Показывать графики эхограмм",
     "Echogrammkurven anzeigen"},
    {"lblViewOzi", Caption, "Display track and points on the map in OziExplorer",
     "Трек и точки на карте OziExplorer", "Strecke und Punkte in OziExplorer"},
};

constexpr CaptionRow Hint = {"Att", Caption,
                             " * button '??"
                             "?' opens mini help file",
                             " * кнопка ??? выводит мини-справку по этой программе",
                             " * Die Taste ??? ruft den Programmkurzübersicht auf"};

}  // namespace

std::span<const CaptionRow> CaptionRows() { return Rows; }

std::string_view TextOf(const CaptionRow& row, LangId id) {
  switch (id) {
    case LangRussian:
      return row.russian;
    case LangEnglish:
      return row.english;
    case LangGerman:
      return row.german;
    default:
      return {};
  }
}

std::string_view HintHelpOf(LangId id) { return TextOf(Hint, id); }

}  // namespace sondrix
