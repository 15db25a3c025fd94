#include "sounders/table/table_time.h"

#include "core/text.h"
#include "sounders/common/calendar.h"
#include "sounders/common/zone.h"
#include "sounders/table/table_cells.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sondrix {
namespace {

constexpr std::int64_t ExcelEpoch = -25569;  // 30 December 1899, days since 1970

constexpr bool IsLetter(char c) { return Lower(c) >= 'a' && Lower(c) <= 'z'; }

// Takes pieces from the start of a text.
struct Pieces {
  std::string_view text;

  bool Take(char c) {
    if (text.empty() || text.front() != c) return false;
    text.remove_prefix(1);
    return true;
  }
  // A whole number of 1 to 9 digits; how many there were, 0 for none.
  std::size_t Whole(int& value) {
    std::size_t count = 0;
    value = 0;
    while (count < text.size() && count < 9 && IsDigit(text[count]))
      value = value * 10 + (text[count++] - '0');
    text.remove_prefix(count);
    return count;
  }
  std::string_view Letters() {
    std::size_t count = 0;
    while (count < text.size() && IsLetter(text[count])) ++count;
    const std::string_view letters = text.substr(0, count);
    text.remove_prefix(count);
    return letters;
  }
  void SkipBlanks() {
    while (Take(' ')) {
    }
  }
};

int MonthOf(std::string_view name) {
  static constexpr std::string_view names = "janfebmaraprmayjunjulaugsepoctnovdec";
  if (name.size() < 3) return 0;
  const std::array<char, 3> start = {Lower(name[0]), Lower(name[1]), Lower(name[2])};
  for (std::size_t i = 0; i < 12; ++i)
    if (names.substr(3 * i, 3) == std::string_view(start.data(), 3)) return static_cast<int>(i) + 1;
  return 0;
}

// The date's three parts as they stand, a month's name as its number, and whether that was the case.
struct DateParts {
  std::array<int, 3> value{};
  std::array<std::size_t, 3> digits{};  // 0 for a name
  char mark = ' ';
};

std::optional<DateParts> TakeDate(Pieces& pieces) {
  DateParts parts;
  for (std::size_t i = 0; i < 3; ++i) {
    parts.digits[i] = pieces.Whole(parts.value[i]);
    if (parts.digits[i] == 0) {
      parts.value[i] = MonthOf(pieces.Letters());
      if (parts.value[i] == 0) return std::nullopt;
    }
    if (parts.digits[i] > 4 || parts.digits[i] == 3) return std::nullopt;
    if (i == 2) break;
    if (i == 0) {
      if (pieces.text.empty()) return std::nullopt;
      parts.mark = pieces.text.front();
      if (std::string_view("-./ ").find(parts.mark) == std::string_view::npos) return std::nullopt;
    }
    if (!pieces.Take(parts.mark) && !(parts.mark == ' ' && pieces.Take(','))) return std::nullopt;
    pieces.SkipBlanks();
  }
  return parts;
}

std::optional<int> DayOfParts(const DateParts& parts, DateOrder order) {
  const auto& [a, b, c] = parts.value;
  if (parts.digits[0] == 4) return DayOf(a, b, c);
  if (parts.digits[2] == 0 || parts.digits[2] == 1) return std::nullopt;
  const int year = parts.digits[2] == 4 ? c : c + (c < 70 ? 2000 : 1900);
  if (parts.digits[0] == 0) return DayOf(year, a, b);
  if (parts.digits[1] == 0) return DayOf(year, b, a);
  const bool monthFirst = order == DateOrder::MonthFirst;
  return DayOf(year, monthFirst ? a : b, monthFirst ? b : a);
}

// h:mm[:ss[.fff]] with AM or PM behind it.
std::optional<double> TakeClock(Pieces& pieces) {
  int hours = 0, minutes = 0, seconds = 0;
  double fraction = 0;
  if (const std::size_t digits = pieces.Whole(hours); digits == 0 || digits > 2) return std::nullopt;
  if (!pieces.Take(':') || pieces.Whole(minutes) == 0) return std::nullopt;
  if (pieces.Take(':')) {
    if (pieces.Whole(seconds) == 0) return std::nullopt;
    if (pieces.Take('.') || pieces.Take(',') || pieces.Take(':')) {
      double unit = 0.1;
      for (; !pieces.text.empty() && IsDigit(pieces.text.front()); pieces.text.remove_prefix(1), unit /= 10)
        fraction += unit * (pieces.text.front() - '0');
    }
  }
  if (hours > 24 || minutes > 59 || seconds > 60) return std::nullopt;
  Pieces behind = pieces;
  behind.SkipBlanks();
  std::string_view half = behind.Letters();
  if (half.size() == 2 && Lower(half[1]) == 'm' && (Lower(half[0]) == 'a' || Lower(half[0]) == 'p')) {
    if (hours < 1 || hours > 12) return std::nullopt;
    hours = hours % 12 + (Lower(half[0]) == 'p' ? 12 : 0);
    pieces = behind;
  }
  return hours * 3600 + minutes * 60 + seconds + fraction;
}

// 24 hours of any number of digits, from the right.
std::optional<double> ClockOfDigits(double value) {
  if (!(value >= 0 && value < 1e6)) return std::nullopt;
  const double whole = std::floor(value);
  const auto digits = static_cast<std::int64_t>(whole);
  const auto hours = digits / 10000, minutes = digits / 100 % 100, seconds = digits % 100;
  if (hours > 24 || minutes > 59 || seconds > 60) return std::nullopt;
  return static_cast<double>(hours * 3600 + minutes * 60 + seconds) + (value - whole);
}

}  // namespace

std::optional<Moment> MomentOf(std::string_view text, DateOrder order) {
  Moment moment;
  Pieces pieces = {TrimmedCell(text)};
  if (pieces.text.size() < 4 || pieces.text.size() > 48) return std::nullopt;
  Pieces clockFirst = pieces;
  if (const std::optional<double> clock = TakeClock(clockFirst)) {
    moment.clock = clock;
    pieces = clockFirst;
  } else {
    const std::optional<DateParts> parts = TakeDate(pieces);
    if (!parts) return std::nullopt;
    moment.day = DayOfParts(*parts, order);
    if (!moment.day) return std::nullopt;
    pieces.Take(',');
    if (!pieces.Take('T') && !pieces.Take('t')) pieces.SkipBlanks();
    if (!pieces.text.empty() && !(moment.clock = TakeClock(pieces))) return std::nullopt;
  }
  pieces.SkipBlanks();
  if (!pieces.text.empty()) {
    moment.ahead = moment.clock ? OffsetOf(pieces.text) : std::nullopt;
    if (!moment.ahead) return std::nullopt;
  }
  return moment;
}

DateOrderFound DateOrderOf(std::span<const std::string_view> cells) {
  bool mayBeDay = true, mayBeMonth = true, hasSlash = false, isSeen = false;
  for (const std::string_view cell : cells) {
    Pieces pieces = {cell};
    const std::optional<DateParts> parts = TakeDate(pieces);
    if (!parts || parts->digits[0] > 2 || parts->digits[0] == 0 || parts->digits[1] == 0) continue;
    isSeen = true;
    hasSlash = hasSlash || parts->mark == '/';
    if (!DayOfParts(*parts, DateOrder::DayFirst)) mayBeDay = false;
    if (!DayOfParts(*parts, DateOrder::MonthFirst)) mayBeMonth = false;
    // The clock of twelve hours goes with months first.
    if (Lower(cell.back()) == 'm') hasSlash = true;
  }
  if (mayBeDay != mayBeMonth) return {mayBeDay ? DateOrder::DayFirst : DateOrder::MonthFirst, true};
  return {hasSlash ? DateOrder::MonthFirst : DateOrder::DayFirst, !isSeen || !hasSlash};
}

TimeForm TimeFormOf(std::span<const std::string_view> cells, bool isTime) {
  std::size_t texts = 0, numbers = 0, seen = 0, whole = 0;
  double largest = 0, least = 1e30;
  std::size_t digits = 0;
  for (const std::string_view cell : cells) {
    if (IsMissing(cell)) continue;
    ++seen;
    if (const std::optional<double> number = CellNumber(cell)) {
      if (*number <= 0) {
        --seen;
        continue;
      }
      ++numbers;
      largest = std::max(largest, *number);
      least = std::min(least, *number);
      digits = std::max(digits, std::min(cell.find_first_of(".,"), cell.size()));
      if (cell.find_first_of(".,") == std::string_view::npos) ++whole;
    } else if (MomentOf(cell, DateOrder::DayFirst) || MomentOf(cell, DateOrder::MonthFirst)) {
      ++texts;
    }
  }
  if (texts > 0 && texts * 2 >= seen) return TimeForm::Text;
  if (numbers * 2 <= seen || seen == 0) return TimeForm::None;
  // A date as one number of its digits.
  if (whole == numbers && (digits == 8 || digits == 14)) {
    for (const TimeForm form : {TimeForm::YearFirst, TimeForm::DayFirst})
      if (MomentOfNumber(largest, form) && MomentOfNumber(least, form)) return form;
  }
  static constexpr struct {
    double from;
    TimeForm form;
  } sizes[] = {{1e17, TimeForm::Nanoseconds},
               {1e14, TimeForm::Microseconds},
               {1e11, TimeForm::Milliseconds},
               {1e8, TimeForm::Seconds}};
  for (const auto& size : sizes)
    if (largest >= size.from && largest < size.from * 1e3) return size.form;
  const bool isPart = largest < 1 && whole == 0;
  const bool isDays = least > 25569 && largest < 80000;
  if (isTime && (isDays || isPart)) return TimeForm::ExcelDays;
  return TimeForm::None;
}

std::optional<Moment> MomentOfNumber(double value, TimeForm form) {
  Moment moment;
  switch (form) {
    case TimeForm::ExcelDays: {
      // To whole milliseconds: a day's fraction has no more.
      const double day = std::floor(value);
      if (value < 0 || day > 100000) return std::nullopt;
      if (day > 0) moment.day = static_cast<std::int64_t>(day) + ExcelEpoch;
      moment.clock = std::round((value - day) * SecondsOfDay * 1e3) / 1e3;
      return moment;
    }
    case TimeForm::YearFirst:
    case TimeForm::DayFirst: {
      if (!(value >= 0 && value < 1e15)) return std::nullopt;
      auto number = static_cast<std::int64_t>(value);
      if (number > 99999999) {
        moment.clock = ClockOfDigits(static_cast<double>(number % 1000000));
        if (!moment.clock) return std::nullopt;
        number /= 1000000;
      }
      const auto first = static_cast<int>(number / 10000), last = static_cast<int>(number % 10000);
      moment.day = form == TimeForm::YearFirst ? DayOf(first, last / 100, last % 100)
                                               : DayOf(last, first % 100, first / 100);
      if (!moment.day) return std::nullopt;
      return moment;
    }
    case TimeForm::Clock:
      moment.clock = ClockOfDigits(value);
      if (!moment.clock) return std::nullopt;
      return moment;
    default:
      return std::nullopt;
  }
}

}  // namespace sondrix
