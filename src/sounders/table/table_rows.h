#pragma once

#include "sounders/common/line_reader.h"
#include "sounders/table/table_layout.h"
#include "sounders/table/table_shape.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What a row has in the slots of a layout.
struct TableRow {
  // By Slot: position, depth, and times that are numbers. Not a number where nothing stands.
  std::array<double, SlotCount> numbers;
  // By Slot: times that are texts, letters, channel, trip. Valid until the next row.
  std::array<std::string_view, SlotCount> texts;

  double Number(Slot slot) const { return numbers[static_cast<std::size_t>(slot)]; }
  std::string_view Text(Slot slot) const { return texts[static_cast<std::size_t>(slot)]; }
};

// The rows of a table, one after the other. Comments, blank lines and the head, wherever it stands, are none.
class TableRows {
 public:
  TableRows(std::string_view path, const TableShape& shape, const TableLayout& layout,
            const ReadWatch& watch);

  // The next row that can be understood; false behind the last. Faults and EndAsked as of a LineReader.
  bool Next(TableRow& row);

  // What stands in front of a head is no row.
  std::uint64_t BadRows() const { return badRows_; }
  std::uint64_t CutRows() const { return cutRows_; }  // the last one, at most
  std::uint64_t LongLines() const { return lines_.LongLines(); }

 private:
  // What a column's cell is read as.
  enum class Reading : std::uint8_t { Skip, Number, Text };
  struct Column {
    Reading reading = Reading::Skip;
    std::uint8_t slot = 0;
  };

  // A row of plain numbers and texts; false for what needs a closer look.
  bool ReadPlain(std::string_view line, TableRow& row) const;
  bool ReadAny(std::string_view line, TableRow& row);
  bool ReadCell(const Column& column, std::string_view cell, TableRow& row) const;
  bool IsHead(std::string_view line) const;

  LineReader lines_;
  TableShape shape_;
  PlaceForm place_;
  double metres_;                // of the unit of depths
  std::vector<Column> columns_;  // to the last one that is read
  std::vector<std::string_view> cells_;
  std::string decoded_;
  bool isFirst_ = true;
  bool isInFront_;  // of the head
  std::uint64_t badRows_ = 0, cutRows_ = 0;
};

}  // namespace sondrix
