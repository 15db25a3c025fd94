#include "sounders/table/table_rows.h"

#include "sounders/table/table_angle.h"
#include "sounders/table/table_cells.h"
#include "sounders/table/table_names.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>

namespace sondrix {
namespace {

constexpr auto FirstSlot = static_cast<std::uint8_t>(Slot::First);
constexpr auto SecondSlot = static_cast<std::uint8_t>(Slot::Second);
constexpr auto DepthSlot = static_cast<std::uint8_t>(Slot::Depth);

bool IsNumber(Slot slot, const TableLayout& layout) {
  switch (slot) {
    case Slot::First:
    case Slot::Second:
    case Slot::Depth:
      return true;
    case Slot::Time:
      return layout.time != TimeForm::Text;
    case Slot::Date:
      return layout.date != TimeForm::Text;
    default:
      return false;
  }
}

// A decimal with a point of any number of digits; null where there is none.
const char* ReadLong(const char* at, const char* end, double& number) {
  const char* const digit = at != end && *at == '-' ? at + 1 : at;
  if (digit == end || *digit < '0' || *digit > '9') return nullptr;
  const auto [behind, error] = std::from_chars(at, end, number, std::chars_format::fixed);
  return error == std::errc{} ? behind : nullptr;
}

// Metres of a number with a unit of length behind it, as "4.5 m" or "15ft".
std::optional<double> MetresOfCell(std::string_view cell) {
  const std::size_t end = cell.find_last_of("0123456789.,");
  if (end == std::string_view::npos || end + 1 == cell.size()) return std::nullopt;
  const double metres = MetresOf(cell.substr(end + 1));
  const std::optional<double> number = CellNumber(TrimmedCell(cell.substr(0, end + 1)));
  if (metres == 0 || !number) return std::nullopt;
  return *number * metres;
}

}  // namespace

TableRows::TableRows(std::string_view path, const TableShape& shape, const TableLayout& layout,
                     const ReadWatch& watch)
    : lines_(path, watch),
      shape_(shape),
      place_(layout.place),
      metres_(layout.metres),
      isInFront_(!shape.headLine.empty()) {
  shape_.rows.clear();
  for (std::size_t slot = 0; slot < SlotCount; ++slot) {
    const std::size_t at = layout.columnOf[slot];
    if (at == NoColumn) continue;
    if (columns_.size() <= at) columns_.resize(at + 1);
    columns_[at].reading = IsNumber(static_cast<Slot>(slot), layout) ? Reading::Number : Reading::Text;
    columns_[at].slot = static_cast<std::uint8_t>(slot);
  }
}

bool TableRows::Next(TableRow& row) {
  while (std::optional<std::string_view> next = lines_.Next()) {
    std::string_view line = *next;
    if (isFirst_) {
      isFirst_ = false;
      line.remove_prefix(std::min(line.size(), EncodingOf(line).markBytes));
    }
    if (shape_.encoding != TableEncoding::Bytes) {
      DecodeLine(line, shape_.encoding, decoded_);
      line = decoded_;
    }
    if (ReadPlain(line, row)) return true;
    if (ReadAny(line, row)) return true;
  }
  return false;
}

bool TableRows::ReadPlain(std::string_view line, TableRow& row) const {
  const char* at = line.data();
  const char* const end = at + line.size();
  const char separator = shape_.separator;
  const char mark = separator == ',' ? '.' : ',';
  bool isFirst = true;
  for (const Column column : columns_) {
    if (!isFirst) {
      if (at == end || *at != separator) return false;
      ++at;
    }
    isFirst = false;
    while (at != end && *at == ' ') ++at;
    if (column.reading == Reading::Number) {
      double& number = row.numbers[column.slot];
      if (const char* const behind = ReadDecimal(at, end, number, mark)) {
        at = behind;
      } else if (const char* const behindLong = ReadLong(at, end, number)) {
        at = behindLong;
      } else if (at != end && *at == separator) {
        number = Unknown;
      } else {
        return false;
      }
      continue;
    }
    if (at != end && (*at == '"' || *at == ' ')) return false;
    const auto* stop =
        static_cast<const char*>(std::memchr(at, separator, static_cast<std::size_t>(end - at)));
    if (stop == nullptr) stop = end;
    if (column.reading == Reading::Text) row.texts[column.slot] = {at, static_cast<std::size_t>(stop - at)};
    at = stop;
  }
  return at == end || *at == separator;
}

bool TableRows::ReadCell(const Column& column, std::string_view cell, TableRow& row) const {
  row.texts[column.slot] = cell;
  if (column.reading != Reading::Number) return true;
  double& number = row.numbers[column.slot];
  number = Unknown;
  if (IsMissing(cell)) return true;
  if (const std::optional<double> value = CellNumber(cell)) {
    number = *value;
    return true;
  }
  if (column.slot == DepthSlot) {
    const std::optional<double> metres = MetresOfCell(cell);
    number = metres.value_or(Unknown) / metres_;
    return metres.has_value();
  }
  if (column.slot != FirstSlot && column.slot != SecondSlot) return true;
  const std::optional<Angle> angle = AngleOf(cell);
  const Axis axis = column.slot == FirstSlot ? Axis::Latitude : Axis::Longitude;
  if (!angle || (angle->axis != Axis::Unsaid && angle->axis != axis)) return false;
  number = angle->degrees;
  return place_ == PlaceForm::Degrees;
}

bool TableRows::IsHead(std::string_view line) const {
  return !shape_.headLine.empty() && line.find(shape_.headLine) != std::string_view::npos;
}

bool TableRows::ReadAny(std::string_view line, TableRow& row) {
  const std::string_view trimmed = TrimmedCell(line);
  if (trimmed.empty()) return false;
  if (IsHead(line)) {
    isInFront_ = false;
    return false;
  }
  if (IsComment(trimmed, shape_.separator)) return false;
  SplitRow(line, shape_.separator, cells_, columns_.size());
  bool isGood = cells_.size() == columns_.size() && !columns_.empty();
  for (std::size_t i = 0; isGood && i < columns_.size(); ++i)
    if (columns_[i].reading != Reading::Skip) isGood = ReadCell(columns_[i], cells_[i], row);
  if (isGood) return true;
  if (isInFront_) return false;
  if (lines_.IsCut()) {
    ++cutRows_;
  } else {
    ++badRows_;
  }
  return false;
}

}  // namespace sondrix
