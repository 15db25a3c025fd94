#pragma once

#include "sounders/common/reading.h"
#include "sounders/table/table_shape.h"
#include "sounders/table/table_time.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// What a reader takes from a row.
enum class Slot : std::uint8_t {
  First,   // latitude, or northing
  Second,  // longitude, or easting
  Depth,
  Time,
  Date,
  NorthSouth,
  EastWest,
  Channel,
  Trip,
};
inline constexpr std::size_t SlotCount = 9;
inline constexpr std::size_t NoColumn = static_cast<std::size_t>(-1);

// How the first two slots tell a place.
enum class PlaceForm : std::uint8_t {
  Degrees,
  Minutes,        // ddmm.mmmm
  DegreesE7,      // whole units of 1e-7 degrees
  SounderMetres,  // the sounder maker's Mercator projection
  Given,          // as the options say
};

struct TableLayout {
  std::array<std::size_t, SlotCount> columnOf;  // from 0, or NoColumn
  PlaceForm place = PlaceForm::Degrees;
  double metres = 1;  // of the unit of depths
  bool isHeight = false;
  bool mayBeDepth = false;   // it is a height only because the user said so, and has to be below 0 then
  bool isOwn = false;        // soundings as the chart program writes them
  bool isOrderOpen = false;  // of latitude and longitude: guessed by the sign of the depths
  TimeForm time = TimeForm::None, date = TimeForm::None;
  DateOrder dateOrder = DateOrder::DayFirst;
  std::vector<std::string> takenFor, remarks;  // for the reading

  TableLayout() { columnOf.fill(NoColumn); }
  std::size_t& Of(Slot slot) { return columnOf[static_cast<std::size_t>(slot)]; }
  std::size_t Of(Slot slot) const { return columnOf[static_cast<std::size_t>(slot)]; }
  bool Has(Slot slot) const { return Of(slot) != NoColumn; }
};

// From the options, else the head, else the look of the columns. CantRead where it isn't known which column
// is the position or the depth, or what its numbers mean.
TableLayout LayoutOf(const TableShape& shape, const ReadOptions& options);

// The names of our own table of soundings, in order.
inline constexpr std::array<std::string_view, 7> OwnHead = {"latitude", "longitude", "depth", "time",
                                                            "trip",     "recorded",  "fate"};

}  // namespace sondrix
