#include "sounders/table/table_stats.h"

#include "sounders/table/table_cells.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace sondrix {
namespace {

constexpr std::size_t FineDecimals = 4;

std::size_t DecimalsOf(std::string_view cell) {
  const std::size_t mark = cell.find_last_of(".,");
  return mark == std::string_view::npos ? 0 : cell.size() - mark - 1;
}

void Count(ColumnStats& stats, std::string_view cell) {
  if (IsMissing(cell)) return;
  if (SignOfLetter(cell)) {
    ++stats.letters;
    ++stats.texts;
    return;
  }
  double value = 0;
  if (const std::optional<double> number = CellNumber(cell)) {
    value = *number;
    if (value == 0) {
      ++stats.zeros;
      return;
    }
    const std::size_t decimals = DecimalsOf(cell);
    if (decimals == 0) ++stats.whole;
    if (decimals >= FineDecimals) ++stats.fine;
    if (!DegreesOfNmea(value)) stats.isMinutes = false;
  } else if (const std::optional<Angle> angle = AngleOf(cell)) {
    value = angle->degrees;
    ++stats.fine;
    if (angle->axis != Axis::Unsaid) stats.axis = angle->axis;
  } else {
    ++stats.texts;
    return;
  }
  const double size = std::fabs(value);
  ++stats.values;
  if (size > 180) ++stats.beyond180;
  if (size > DeepestWater) ++stats.tooDeep;
  if (value < 0) ++stats.negative;
  if (size < stats.largest) return;
  stats.largest = size;
  stats.example = cell;
}

}  // namespace

std::vector<ColumnStats> StatsOf(const TableShape& shape) {
  std::vector<ColumnStats> stats(shape.columns);
  std::vector<std::string_view> cells;
  for (const std::string& row : shape.rows) {
    SplitRow(row, shape.separator, cells, shape.columns);
    for (std::size_t i = 0; i < std::min(cells.size(), stats.size()); ++i) {
      stats[i].cells.push_back(cells[i]);
      Count(stats[i], cells[i]);
    }
  }
  for (ColumnStats& column : stats) column.time = TimeFormOf(column.cells, false);
  return stats;
}

}  // namespace sondrix
