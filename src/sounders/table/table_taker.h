#pragma once

#include "sounders/table/table_clock.h"
#include "sounders/table/table_layout.h"
#include "sounders/table/table_rows.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace sondrix {

// Makes soundings of rows and adds them to a reading.
class TableTaker {
 public:
  // A channel: rows of others are left out.
  TableTaker(const TableLayout& layout, const ReadOptions& options, std::optional<std::uint8_t> channel,
             Reading& reading);

  void Take(const TableRow& row);

  // Behind the last row: what can be said only of all of them, as the order of the coordinates and the sign
  // of the depths, is put right, and told.
  void Finish();

 private:
  bool TakePlace(const TableRow& row, Sounding& sounding);
  bool TakeDegrees(double latitude, double longitude, Sounding& sounding);
  void TakeDepth(const TableRow& row, Sounding& sounding);
  SoundingList& ListOf(std::string_view trip);
  void FinishPlaces();
  void FinishDepths();
  void Remark(std::uint64_t count, std::string_view text);

  const TableLayout& layout_;
  const ReadOptions& options_;
  std::optional<std::uint8_t> channel_;
  Reading& reading_;
  TableClock clock_;

  std::map<std::string, std::size_t, std::less<>> trips_;  // of our own table, by the text of the cell
  std::deque<std::size_t> open_;                           // trips that may take another sounding soon
  std::size_t trip_ = 0;
  std::string tripText_;

  std::uint64_t placed_ = 0;
  std::uint64_t exchanged_ = 0;  // that fit only with latitude and longitude exchanged
  std::uint64_t sure_ = 0;       // that fit only as they stand
  std::uint64_t outside_ = 0;    // of what the options' projection reaches
  std::uint64_t negative_ = 0, positive_ = 0;
};

}  // namespace sondrix
