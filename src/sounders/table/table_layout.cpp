#include "sounders/table/table_layout.h"

#include "sounders/table/table_cells.h"
#include "sounders/table/table_guess.h"
#include "sounders/table/table_names.h"
#include "sounders/table/table_stats.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sondrix {
namespace {

constexpr std::string_view Hint = "; --columns names them in their order";

// A list of names for a line, not too long.
std::string ListOf(const std::vector<std::string>& names) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (list.size() > 120) return list + " and " + std::to_string(names.size() - i) + " more";
    if (i > 0) list += ", ";
    list += names[i].size() > 40 ? names[i].substr(0, 37) + "..." : names[i];
  }
  return list;
}

std::vector<ColumnName> NamedBy(const TableShape& shape, const ReadOptions& options) {
  std::vector<ColumnName> names;
  if (!options.columns.empty()) {
    for (const std::string& name : options.columns) {
      names.push_back(ColumnNameOf(name));
      if (names.back().meaning == Meaning::Unknown)
        throw CantRead("--columns: \"" + name + "\" is no name of a column");
    }
    return names;
  }
  for (const std::string& name : shape.head) names.push_back(ColumnNameOf(name));
  return names;
}

// A date and a clock between blanks are two columns under one name.
void PartDates(std::vector<ColumnName>& names, const TableShape& shape,
               const std::vector<ColumnStats>& stats) {
  if (shape.separator != Blanks || names.size() + 1 != stats.size()) return;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].meaning != Meaning::Time && names[i].meaning != Meaning::Date) continue;
    if (stats[i].time != TimeForm::Text || stats[i + 1].time != TimeForm::Text) continue;
    names[i].meaning = Meaning::Date;
    names.insert(names.begin() + static_cast<std::ptrdiff_t>(i) + 1, {Meaning::Time, 0, 0});
    return;
  }
}

// The column of a meaning whose name is the likeliest; of two alike the one with a unit, then the first.
std::size_t Likeliest(const std::vector<ColumnName>& names, Meaning meaning) {
  std::size_t best = NoColumn;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].meaning != meaning) continue;
    if (best == NoColumn || names[i].rank < names[best].rank ||
        (names[i].rank == names[best].rank && names[best].metres == 0 && names[i].metres > 0))
      best = i;
  }
  return best;
}

void TakePair(TableLayout& layout, const std::vector<ColumnName>& names, Meaning first, Meaning second) {
  const std::size_t a = Likeliest(names, first), b = Likeliest(names, second);
  if (a == NoColumn || b == NoColumn || layout.Has(Slot::First)) return;
  layout.Of(Slot::First) = a;
  layout.Of(Slot::Second) = b;
}

void TakeNames(TableLayout& layout, const std::vector<ColumnName>& names, const ReadOptions& options) {
  if (options.toDegrees) TakePair(layout, names, Meaning::Y, Meaning::X);
  TakePair(layout, names, Meaning::Latitude, Meaning::Longitude);
  TakePair(layout, names, Meaning::Y, Meaning::X);
  if (!layout.Has(Slot::First)) {
    TakePair(layout, names, Meaning::SounderY, Meaning::SounderX);
    if (layout.Has(Slot::First)) layout.place = PlaceForm::SounderMetres;
  }
  layout.Of(Slot::Depth) = Likeliest(names, Meaning::Depth);
  if (!layout.Has(Slot::Depth)) {
    layout.Of(Slot::Depth) = Likeliest(names, Meaning::Height);
    layout.isHeight = layout.Has(Slot::Depth);
  }
  if (layout.Has(Slot::Depth)) {
    const double metres = names[layout.Of(Slot::Depth)].metres;
    if (metres > 0) layout.metres = metres;
  }
  layout.Of(Slot::Time) = Likeliest(names, Meaning::Time);
  layout.Of(Slot::Date) = Likeliest(names, Meaning::Date);
  layout.Of(Slot::NorthSouth) = Likeliest(names, Meaning::NorthSouth);
  layout.Of(Slot::EastWest) = Likeliest(names, Meaning::EastWest);
  layout.Of(Slot::Channel) = Likeliest(names, Meaning::Channel);
}

bool IsOwn(const TableShape& shape, const ReadOptions& options) {
  return options.columns.empty() &&
         std::equal(shape.head.begin(), shape.head.end(), OwnHead.begin(), OwnHead.end());
}

void CheckColumns(const TableLayout& layout, const TableShape& shape, bool isNamed) {
  if (shape.columns < 2 && !isNamed)
    throw CantRead("one column only: latitude, longitude and depth are wanted");
  std::string missing;
  if (!layout.Has(Slot::First)) missing = "no columns are a latitude and a longitude";
  if (!layout.Has(Slot::Depth)) missing += missing.empty() ? "no column is a depth" : ", and none is a depth";
  if (missing.empty()) return;
  if (!shape.head.empty()) missing += " (" + ListOf(shape.head) + ")";
  throw CantRead(missing + std::string(Hint));
}

// The numbers of the position have to be what the form says.
void FindPlaceForm(TableLayout& layout, const std::vector<ColumnStats>& stats, const ReadOptions& options,
                   bool isDegrees) {
  if (options.toDegrees) layout.place = PlaceForm::Given;
  if (layout.place != PlaceForm::Degrees || stats.empty()) return;
  static const ColumnStats none;
  const auto at = [&](Slot slot) -> const ColumnStats& {
    return layout.Of(slot) < stats.size() ? stats[layout.Of(slot)] : none;
  };
  const ColumnStats *first = &at(Slot::First), *second = &at(Slot::Second);
  if (first->axis == Axis::Longitude || second->axis == Axis::Latitude) {
    std::swap(layout.Of(Slot::First), layout.Of(Slot::Second));
    std::swap(first, second);
    layout.takenFor.emplace_back("latitude and longitude by their letters, against the head");
  }
  // Longitudes may be counted up to 360.
  const bool isNorthSmall = first->beyond180 * 2 <= first->values;
  const bool isSmall = isNorthSmall && (second->beyond180 * 2 <= second->values || second->largest <= 360);
  if (isSmall) return;
  const double largest = std::max(first->largest, second->largest);
  const bool isWhole = first->whole == first->values && second->whole == second->values;
  if (isDegrees && isWhole && largest > 1e7 && largest <= 1.8e9) {
    layout.place = PlaceForm::DegreesE7;
    layout.takenFor.emplace_back("positions in units of 1e-7 degrees");
    return;
  }
  const bool isMinutes = !isNorthSmall || layout.Has(Slot::NorthSouth);
  if (isDegrees && isMinutes && !isWhole && first->isMinutes && second->isMinutes && largest <= 18000) {
    layout.place = PlaceForm::Minutes;
    layout.takenFor.emplace_back("positions as degrees and minutes without a mark between them (ddmm.mmmm)");
    return;
  }
  const ColumnStats& example = first->largest > second->largest ? *first : *second;
  throw CantRead("columns " + std::to_string(layout.Of(Slot::First) + 1) + " and " +
                 std::to_string(layout.Of(Slot::Second) + 1) + " hold no degrees, but " +
                 std::string(example.example.substr(0, 40)) + "; --source-crs tells what they are");
}

void FindTimeForms(TableLayout& layout, const std::vector<ColumnStats>& stats) {
  const auto cellsOf = [&](Slot slot) -> std::span<const std::string_view> {
    if (layout.Of(slot) >= stats.size()) return {};
    return stats[layout.Of(slot)].cells;
  };
  std::vector<std::string_view> texts;
  for (const Slot slot : {Slot::Date, Slot::Time}) {
    if (!layout.Has(slot)) continue;
    const auto cells = cellsOf(slot);
    TimeForm& form = slot == Slot::Date ? layout.date : layout.time;
    form = TimeFormOf(cells, true);
    if (form == TimeForm::Text) texts.insert(texts.end(), cells.begin(), cells.end());
    if (slot == Slot::Time && form == TimeForm::None && layout.date != TimeForm::None &&
        std::all_of(cells.begin(), cells.end(), [](std::string_view cell) {
          const std::optional<double> number = CellNumber(cell);
          return IsMissing(cell) || (number && MomentOfNumber(*number, TimeForm::Clock));
        }))
      form = TimeForm::Clock;
  }
  const DateOrderFound order = DateOrderOf(texts);
  layout.dateOrder = order.order;
  if (!order.isSure) layout.takenFor.emplace_back("dates as month/day/year: nothing in them tells otherwise");
  if (layout.Has(Slot::Time) && layout.time == TimeForm::None) {
    const auto cells = cellsOf(Slot::Time);
    const bool isEmpty = std::all_of(cells.begin(), cells.end(), IsMissing);
    if (!isEmpty)
      layout.remarks.push_back("column " + std::to_string(layout.Of(Slot::Time) + 1) +
                               " tells no moments, so the soundings have no times from it");
    if (!layout.isOwn) layout.Of(Slot::Time) = NoColumn;
  }
  if (layout.date == TimeForm::None) layout.Of(Slot::Date) = NoColumn;
}

// Texts and small numbers that name a sonar's channel; a column of others is something else, and so are the
// numbers of surveys.
void CheckChannel(TableLayout& layout, const TableShape& shape, const std::vector<ColumnStats>& stats) {
  const std::size_t column = layout.Of(Slot::Channel);
  if (column == NoColumn) return;
  const bool isSurvey = column < shape.head.size() && FoldedName(shape.head[column]) == "survey";
  if (column < stats.size()) {
    const auto& cells = stats[column].cells;
    if (std::all_of(cells.begin(), cells.end(), [isSurvey](std::string_view cell) {
          return ChannelOfCell(cell).has_value() && !(isSurvey && CellNumber(cell));
        }))
      return;
  }
  layout.Of(Slot::Channel) = NoColumn;
}

// Three columns without a head whose last is below 0 throughout are heights over a plane, x first, as a
// converter of logs writes them. Others than this program's guess may know better.
void FindOpenOrder(TableLayout& layout, const TableShape& shape, const std::vector<ColumnStats>& stats,
                   const ReadOptions& options) {
  if (shape.columns != 3 || !shape.headLine.empty() || options.toDegrees) return;
  if (layout.Of(Slot::First) != 0 || layout.Of(Slot::Second) != 1 || layout.Of(Slot::Depth) != 2) return;
  if (stats[0].axis != Axis::Unsaid || stats[1].axis != Axis::Unsaid) return;
  if (stats[2].negative == 0 || stats[2].negative < stats[2].values || stats[2].zeros > 0) return;
  std::swap(layout.Of(Slot::First), layout.Of(Slot::Second));
  layout.isOrderOpen = true;
}

std::string_view TextOf(TimeForm form) {
  switch (form) {
    case TimeForm::Seconds:
      return " (s since 1970, UTC)";
    case TimeForm::Milliseconds:
      return " (ms since 1970, UTC)";
    case TimeForm::Microseconds:
      return " (us since 1970, UTC)";
    case TimeForm::Nanoseconds:
      return " (ns since 1970, UTC)";
    case TimeForm::ExcelDays:
      return " (days since 1899-12-30)";
    default:
      return "";
  }
}

std::string UnitText(double metres) {
  if (metres == 1) return "metres";
  if (metres == 0.3048) return "feet";
  if (metres == 1.8288) return "fathoms";
  if (metres == 0.1) return "decimetres";
  return metres == 0.01 ? "centimetres" : "millimetres";
}

std::string ColumnsText(const TableLayout& layout, const TableShape& shape, bool isGuess) {
  const bool isPlane = layout.place == PlaceForm::Given;
  const bool isSounder = layout.place == PlaceForm::SounderMetres;
  struct Piece {
    Slot slot;
    std::string text;
  };
  Piece pieces[] = {{Slot::First, isSounder ? "y in Mercator metres of the sounder"
                                  : isPlane ? "y"
                                            : "latitude"},
                    {Slot::Second, isSounder ? "x in Mercator metres of the sounder"
                                   : isPlane ? "x"
                                             : "longitude"},
                    {Slot::Depth, (layout.isHeight ? "height in " : "depth in ") + UnitText(layout.metres)},
                    {Slot::Time, "time" + std::string(TextOf(layout.time))},
                    {Slot::Date, "date"},
                    {Slot::NorthSouth, "north or south"},
                    {Slot::EastWest, "east or west"},
                    {Slot::Channel, "channel"},
                    {Slot::Trip, "trip"}};
  std::sort(std::begin(pieces), std::end(pieces),
            [&](const Piece& a, const Piece& b) { return layout.Of(a.slot) < layout.Of(b.slot); });
  std::string text = !isGuess                 ? "columns: "
                     : shape.headLine.empty() ? "no head, columns: "
                     : shape.head.empty()     ? "a head that doesn't fit its rows, columns: "
                                              : "no known names, columns: ";
  bool isFirst = true;
  for (const Piece& piece : pieces) {
    if (!layout.Has(piece.slot)) break;
    text += (isFirst ? "" : ", ") + std::to_string(layout.Of(piece.slot) + 1) + " " + piece.text;
    isFirst = false;
  }
  return text + "; between them " + std::string(NameOfSeparator(shape.separator));
}

}  // namespace

TableLayout LayoutOf(const TableShape& shape, const ReadOptions& options) {
  TableLayout layout;
  layout.isOwn = IsOwn(shape, options);
  if (layout.isOwn) {
    layout.Of(Slot::First) = 0;
    layout.Of(Slot::Second) = 1;
    layout.Of(Slot::Time) = 3;
    layout.Of(Slot::Trip) = 4;
    layout.Of(Slot::Depth) = 5;
    layout.time = TimeForm::Seconds;
    layout.takenFor.emplace_back("soundings of this program: the recorded depths, split by trip");
    return layout;
  }
  const std::vector<ColumnStats> stats = StatsOf(shape);
  std::vector<ColumnName> names = NamedBy(shape, options);
  if (options.columns.empty()) PartDates(names, shape, stats);
  const bool isNamed = std::any_of(names.begin(), names.end(), [](const ColumnName& name) {
    return name.meaning != Meaning::Unknown && name.meaning != Meaning::Ignored;
  });
  bool isDegrees = true;
  if (isNamed) {
    TakeNames(layout, names, options);
    if (!layout.Has(Slot::First) && options.columns.empty()) GuessPlace(layout, names, stats, options);
    isDegrees = !layout.Has(Slot::First) || layout.Of(Slot::First) >= names.size() ||
                names[layout.Of(Slot::First)].meaning != Meaning::Y;
  } else {
    GuessColumns(layout, shape, stats, options);
    FindOpenOrder(layout, shape, stats, options);
  }
  CheckColumns(layout, shape, isNamed);
  FindPlaceForm(layout, stats, options, isDegrees);
  FindTimeForms(layout, stats);
  CheckChannel(layout, shape, stats);
  if (layout.isHeight && !options.isZUp) {
    const std::size_t column = layout.Of(Slot::Depth);
    if (column < stats.size() && stats[column].negative * 2 < stats[column].values)
      throw CantRead("column " + std::to_string(column + 1) +
                     " holds heights above 0 and no depths; --columns tells which column is the depth");
  }
  if (options.isFeet) layout.metres = *options.isFeet ? 0.3048 : 1;
  layout.mayBeDepth = options.isZUp && !layout.isHeight;
  if (options.isZUp) layout.isHeight = true;
  layout.takenFor.insert(layout.takenFor.begin(), ColumnsText(layout, shape, !isNamed));
  return layout;
}

}  // namespace sondrix
