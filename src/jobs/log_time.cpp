#include "jobs/log_time.h"

#include "core/fault.h"

#include <array>
#include <charconv>
#include <chrono>

namespace sondrix {
namespace {

constexpr std::string_view NoDateYet = "01.02.00";
constexpr int CenturyTurn = 30;  // the first short year of the century before
constexpr std::int64_t SecondsOfDay = 86400;

// First two, next two and last two characters, joined by a mark.
void JoinPairs(std::string& text, std::string_view field, char mark) {
  text.assign(field.substr(0, 2));
  text += mark;
  if (field.size() > 2) text.append(field.substr(2, 2));
  text += mark;
  text.append(field.substr(field.size() - std::min<std::size_t>(field.size(), 2)));
}

// The three numbers of one or two digits that a mark joins. Fault 13 for anything else.
std::array<int, 3> SplitPairs(std::string_view text, char mark) {
  std::array<int, 3> numbers{};
  for (int& number : numbers) {
    const std::string_view part = text.substr(0, text.find(mark));
    const char* end = part.data() + part.size();
    const bool isSigned = part.starts_with('-');
    const auto read = std::from_chars(part.data(), end, number);
    const bool last = &number == &numbers.back();
    if (isSigned || part.empty() || part.size() > 2 || read.ptr != end ||
        last != (part.size() == text.size())) {
      throw Fault(FaultNumber::TypeMismatch);
    }
    text.remove_prefix(last ? text.size() : part.size() + 1);
  }
  return numbers;
}

DateSeconds DayOf(int shortYear, int month, int day) {
  const std::chrono::year_month_day date{
      std::chrono::year{shortYear + (shortYear < CenturyTurn ? 2000 : 1900)},
      std::chrono::month{static_cast<unsigned>(month)}, std::chrono::day{static_cast<unsigned>(day)}};
  if (!date.ok()) throw Fault(FaultNumber::TypeMismatch);
  return DateOfUnix(std::chrono::sys_days{date}.time_since_epoch().count() * SecondsOfDay);
}

}  // namespace

void LogTime::SetTime(std::string_view field) { JoinPairs(time_, field, ':'); }

void LogTime::SetDate(std::string_view field) {
  JoinPairs(date_, field, '.');
  isToday_ = false;
  if (date_ != NoDateYet) return;
  date_.clear();
  NeedDate();
}

void LogTime::NeedDate() {
  if (!date_.empty()) return;
  date_ = LogDate(ClockNow());
  isToday_ = true;
}

DateSeconds LogTime::Read() const {
  const auto [first, month, last] = SplitPairs(date_, '.');
  const auto [hour, minute, second] = SplitPairs(time_, ':');
  if (hour > 23 || minute > 59 || second > 59) throw Fault(FaultNumber::TypeMismatch);
  const DateSeconds day = isToday_ ? DayOf(first, month, last) : DayOf(last, month, first);
  return day + hour * 3600 + minute * 60 + second;
}

}  // namespace sondrix
