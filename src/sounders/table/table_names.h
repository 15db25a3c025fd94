#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// What a column of a table is to a reader of soundings.
enum class Meaning : std::uint8_t {
  Unknown,
  Ignored,
  Latitude,
  Longitude,
  Y,  // northing, or latitude where it fits
  X,
  SounderY,  // metres of the sounder maker's Mercator projection
  SounderX,
  NorthSouth,
  EastWest,
  Depth,
  Height,  // above a level: a negative depth
  Time,
  Date,
  Channel,
};
inline constexpr std::size_t MeaningCount = 15;

// As lines for users have it: "latitude".
std::string_view NameOf(Meaning meaning);

struct ColumnName {
  Meaning meaning = Meaning::Unknown;
  double metres = 0;     // of a unit of length that the name says; 0: it says none
  std::size_t rank = 0;  // of two columns of one meaning the lower one is more likely meant
};

// What a name in a head, UTF-8, stands for, whatever its letter case, blanks, brackets and marks, with or
// without a unit: "WaterDepth[Feet]", "depth_ft", "Tiefe (m)", "глубина". Also the words of --columns,
// "ignore" and "-" among them.
ColumnName ColumnNameOf(std::string_view name);

// Metres of a unit of length by any of its names, 0 for what is none.
double MetresOf(std::string_view unit);

// Lower case letters and digits alone, without accents; Latin and Cyrillic.
std::string FoldedName(std::string_view name);

// A head's name from the bytes of a file: UTF-8, or one of two 8-bit code pages, whichever gives a known
// name.
std::string HeadName(std::string_view bytes);

}  // namespace sondrix
