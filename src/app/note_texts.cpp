#include "app/note_texts.h"

namespace sondrix {
namespace {

using N = NoteTexts;

struct Row {
  std::string_view NoteTexts::*key;
  std::string_view english, russian, german;
};

constexpr Row Rows[] = {
    {&N::noPoints, "0 points: ", "0 точек: ", "0 Punkte: "},
    {&N::channel, "channel {0}", "канал {0}", "Kanal {0}"},
    {&N::extension, "the extension \"{0}\" is read as a table, it has to be \"{1}\"",
     "расширение \"{0}\" читается как таблица, оно должно быть \"{1}\"",
     "die Endung \"{0}\" wird als Tabelle gelesen, sie muss \"{1}\" sein"},
    {&N::nothingRead, "nothing in it could be read", "прочитать ничего не удалось",
     "nichts darin war lesbar"},
    {&N::stopped, "the run was stopped before the first point", "обработка прервана до первой точки",
     "vor dem ersten Punkt abgebrochen"},
    {&N::noFrame, "no frame of {0}", "нет ни одного снимка {0}", "kein Bild von {0}"},
    {&N::noRow, "no row of {0}", "нет ни одной строки {0}", "keine Zeile von {0}"},
    {&N::noDepth, "{0} has no depth", "{0} - без глубин", "{0} hat keine Tiefe"},
    {&N::depths, "{0} has {1} of {2}", "{0} - {1} из {2} с глубиной", "{0} hat {1} von {2}"},
    {&N::from, "from {0}", "с {0}", "ab {0}"},
    {&N::to, "to {0}", "до {0}", "bis {0}"},
    {&N::fromTo, "{0} to {1}", "с {0} по {1}", "{0} bis {1}"},
    {&N::outside, "the interval {0} lies outside the indices {1} to {2}",
     "интервал {0} лежит вне номеров с {1} по {2}",
     "das Intervall {0} liegt außerhalb der Nummern {1} bis {2}"},
    {&N::before, "the interval {0} ends before the first index {1}",
     "интервал {0} кончается до первого номера {1}", "das Intervall {0} endet vor der ersten Nummer {1}"},
    {&N::noFrameInside, "no frame of {1} in the interval {0}", "в интервале {0} нет снимков {1}",
     "im Intervall {0} gibt es kein Bild von {1}"},
    {&N::noDepthInside, "{1} has no depth in the interval {0}", "в интервале {0} у {1} нет глубин",
     "im Intervall {0} hat {1} keine Tiefe"},
    {&N::unfit, "no frame of {0} is sound", "нет ни одного исправного снимка {0}",
     "kein Bild von {0} ist brauchbar"},
    {&N::fellToDistance, "every sounding ({0}) fell to DistDiff = {1} m",
     "все промеры ({0}) отброшены по DistDiff = {1} м", "jede Lotung ({0}) fiel durch DistDiff = {1} m weg"},
    {&N::fellToLimits, "every sounding ({0}) fell to DistDiff = {1} m or DepthDiff = {2} cm",
     "все промеры ({0}) отброшены по DistDiff = {1} м или DepthDiff = {2} см",
     "jede Lotung ({0}) fiel durch DistDiff = {1} m oder DepthDiff = {2} cm weg"},
    {&N::fellTo3D, "in {0} frames no 3D sounding within DistDiff, MaxSide and MaxProc",
     "в {0} снимках нет 3D-промеров в пределах DistDiff, MaxSide и MaxProc",
     "in {0} Bildern keine 3D-Lotung innerhalb von DistDiff, MaxSide und MaxProc"},
    {&N::noPlainRow, "no row of three columns", "нет строк из трёх столбцов", "keine Zeile mit drei Spalten"},
    {&N::noTable3D, "tables hold no rows of {0}", "в таблицах нет строк {0}",
     "Tabellen haben keine Zeilen von {0}"},
    {&N::zeroDepths, "no depth but 0", "все глубины нулевые", "keine Tiefe außer 0"},
    {&N::noPosition, "no depth has a position", "у глубин нет координат", "keine Tiefe hat eine Position"},
    {&N::noSounding, "no $GPGGA with a $SDDBT behind it", "нет ни одной $GPGGA с $SDDBT после неё",
     "kein $GPGGA mit einem $SDDBT dahinter"},
    {&N::noFix, "no position has a satellite fix", "ни у одной позиции нет спутников",
     "keine Position hat Satelliten"},
    {&N::noContour, "no [POLYLINE] with Label and Data", "нет [POLYLINE] с Label и Data",
     "keine [POLYLINE] mit Label und Data"},
    {&N::echogram, "{0}: {1}, {2} frames", "{0}: {1}, снимков: {2}", "{0}: {1}, {2} Bilder"},
    {&N::sampledEchogram, "{0}: {1}, a sample of {2} frames", "{0}: {1}, просмотрено снимков: {2} (выборка)",
     "{0}: {1}, Stichprobe von {2} Bildern"},
    {&N::channelFrames, "{0}: {1} frames, {2} with a depth, indices {3} to {4}",
     "{0}: снимков {1}, с глубиной {2}, номера с {3} по {4}",
     "{0}: {1} Bilder, {2} mit Tiefe, Nummern {3} bis {4}"},
    {&N::times, "{0} to {1}", "с {0} по {1}", "{0} bis {1}"},
    {&N::depthRange, "depths {0} to {1} m", "глубины от {0} до {1} м", "Tiefen {0} bis {1} m"},
    {&N::exportTable, "table", "таблица", "Tabelle"},
    {&N::plainTable, "table of three columns", "таблица из трёх столбцов", "Tabelle mit drei Spalten"},
    {&N::log, "log", "журнал NMEA", "Logdatei"},
    {&N::map, "map", "карта", "Karte"},
    {&N::text, "{0}: {1}, {2}, {3} lines", "{0}: {1}, {2}, строк: {3}", "{0}: {1}, {2}, {3} Zeilen"},
    {&N::sampledText, "{0}: {1}, {2}, about {3} lines by a sample",
     "{0}: {1}, {2}, строк около {3} (выборка)", "{0}: {1}, {2}, etwa {3} Zeilen nach einer Stichprobe"},
    {&N::channelRows, "{0}: {1} rows, {2} with a depth", "{0}: строк {1}, с глубиной {2}",
     "{0}: {1} Zeilen, {2} mit Tiefe"},
    {&N::soundings, "{0} soundings seen", "найдено промеров: {0}", "{0} Lotungen gesehen"},
    {&N::unreadable, "{0}: can't be read", "{0}: не читается", "{0}: nicht lesbar"},
};

constexpr NoteTexts TableOf(std::string_view Row::*language) {
  NoteTexts texts;
  for (const Row& row : Rows) texts.*row.key = row.*language;
  return texts;
}

constexpr NoteTexts English = TableOf(&Row::english);
constexpr NoteTexts Russian = TableOf(&Row::russian);
constexpr NoteTexts German = TableOf(&Row::german);

}  // namespace

const NoteTexts& NoteTextsOf(LangId id) {
  if (id == LangEnglish) return English;
  return id == LangGerman ? German : Russian;
}

}  // namespace sondrix
