#pragma once

#include "sounders/table/table_layout.h"
#include "sounders/table/table_rows.h"

#include <cstdint>

namespace sondrix {

// The times of a table's rows.
class TableClock {
 public:
  TableClock(const TableLayout& layout, const ReadOptions& options);

  // Seconds since 1970 UTC; not a number where the row tells none.
  double SecondsOf(const TableRow& row);

  std::uint64_t BadTimes() const { return badTimes_; }        // texts that tell no time
  std::uint64_t WithoutDate() const { return withoutDate_; }  // a clock alone
  std::uint64_t UnsetTimes() const { return unsetTimes_; }    // before FirstDate
  bool HasLocal() const { return hasLocal_; }                 // times without a zone

 private:
  bool Take(Slot slot, TimeForm form, const TableRow& row, Moment& moment);
  double Dated(double seconds);
  double ToUtc(double local);

  TimeForm time_, date_;
  DateOrder order_;
  double unit_ = 0;  // seconds of a number since 1970; 0: the time is none
  const ReadOptions& options_;
  bool isOwn_;                            // its times are those that were read
  double quarter_ = Unknown, ahead_ = 0;  // what the zone was last asked for, quarters of hours and seconds
  std::uint64_t badTimes_ = 0, withoutDate_ = 0, unsetTimes_ = 0;
  bool hasLocal_ = false;
};

}  // namespace sondrix
