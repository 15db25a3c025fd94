#pragma once

#include "sounders/table/table_angle.h"
#include "sounders/table/table_shape.h"
#include "sounders/table/table_time.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace sondrix {

// Metres; the oceans end before. A larger number stands for a missing one.
inline constexpr double DeepestWater = 12000;

// What the cells of a column look like, from the rows of a shape. Zeros and missing values aren't counted: a
// sounder without a fix or an echo writes them.
struct ColumnStats {
  std::vector<std::string_view> cells;  // of all rows, of the shape's
  std::size_t values = 0;               // numbers and angles
  std::size_t texts = 0;                // neither, nor missing
  std::size_t whole = 0;                // numbers without decimals
  std::size_t fine = 0;                 // numbers with four decimals or more, angles with minutes or letters
  std::size_t beyond180 = 0;
  std::size_t tooDeep = 0;  // for any water: a mark for a missing value, or no depth at all
  std::size_t negative = 0, zeros = 0, letters = 0;
  double largest = 0;              // of the sizes
  std::string_view example;        // the cell of the largest
  Axis axis = Axis::Unsaid;        // that letters say
  bool isMinutes = true;           // all could be ddmm.mmmm
  TimeForm time = TimeForm::None;  // without a name that says so

  // Values but for one in ten, most of them not too large for a coordinate.
  bool IsAngle() const { return values > 0 && texts * 10 <= values && beyond180 * 2 <= values; }
  bool IsZero() const { return values == 0 && texts == 0 && zeros > 0; }
};

std::vector<ColumnStats> StatsOf(const TableShape& shape);

}  // namespace sondrix
