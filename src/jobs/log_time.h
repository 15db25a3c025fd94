#pragma once

#include "core/date_time.h"

#include <string>
#include <string_view>

namespace sondrix {

// The date and time of a log, kept as the texts that its sentences give.
class LogTime {
 public:
  // Two characters each for hour, minute and second: the first two of the field, the next two, and the last
  // two, which are the decimals where a field has such.
  void SetTime(std::string_view field);
  // Day, month and year in the same way. The placeholder of a receiver that has no date yet gives today's.
  void SetDate(std::string_view field);
  // Today's date, unless one has been set.
  void NeedDate();
  // Day first; years 00 to 29 lie in this century. Fault 13 for an impossible date or time.
  DateSeconds Read() const;

 private:
  std::string date_, time_;
  bool isToday_ = false;  // date_ is "yy.mm.dd" then, "dd.mm.yy" otherwise
};

}  // namespace sondrix
