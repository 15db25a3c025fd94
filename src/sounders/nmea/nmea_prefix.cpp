#include "sounders/nmea/nmea_prefix.h"

#include "core/text.h"
#include "sounders/common/calendar.h"
#include "sounders/common/iso_time.h"

#include <charconv>
#include <cstddef>
#include <optional>

namespace sondrix {

namespace {

constexpr std::size_t MostPrefix = 256;

using Form = std::optional<LoggerTime> (*)(std::string_view text, bool dayFirst);

// 1522258800000, 1522258800 or 1522258800.25
std::optional<LoggerTime> EpochTime(std::string_view text, bool) {
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) ++digits;
  if (digits != 13 && digits != 10) return std::nullopt;
  std::size_t end = digits;
  if (digits == 10 && end + 1 < text.size() && text[end] == '.' && IsDigit(text[end + 1])) {
    ++end;
    while (end < text.size() && IsDigit(text[end])) ++end;
  }
  double number = 0;
  std::from_chars(text.data(), text.data() + end, number, std::chars_format::fixed);
  return LoggerTime{.clock = LoggerTime::Clock::Absolute,
                    .seconds = digits == 13 ? number / 1000 : number,
                    .isFine = digits == 13 || end > digits};
}

// 2024-05-01T10:00:00.123Z, 2013/11/20 05:00:04.561
std::optional<LoggerTime> IsoForm(std::string_view text, bool) {
  const std::optional<IsoTime> time = TakeIsoTime(text);
  if (!time) return std::nullopt;
  return LoggerTime{.clock = LoggerTime::Clock::Absolute,
                    .seconds = time->seconds,
                    .needsZone = !time->hasZone,
                    .isFine = time->hasDecimals};
}

std::optional<LoggerTime> OnDay(std::optional<int> day, std::string_view text) {
  const std::optional<TimeOfDay> time = TakeTimeOfDay(text);
  if (!day || !time) return std::nullopt;
  return LoggerTime{.clock = LoggerTime::Clock::Absolute,
                    .seconds = *day * SecondsOfDay + time->seconds,
                    .needsZone = true,
                    .isFine = time->hasDecimals};
}

// 2010:258:01:05:34.06 with the day of the year, which is of UTC
std::optional<LoggerTime> DayOfYearForm(std::string_view text, bool) {
  const std::optional<int> year = TakeDigits(text, 4, 4);
  if (!year || !TakeOneOf(text, ":")) return std::nullopt;
  const std::optional<int> day = TakeDigits(text, 3, 3);
  const std::optional<int> newYear = DayOf(*year, 1, 1);
  if (!day || !newYear || *day < 1 || *day > 366 || !TakeOneOf(text, ":")) return std::nullopt;
  std::optional<LoggerTime> time = OnDay(*newYear + *day - 1, text);
  if (time) time->needsZone = false;
  return time;
}

// 03/15/2010,14:08:45.876 or 15.03.2010 14:08:45
std::optional<LoggerTime> DateForm(std::string_view text, bool dayFirst) {
  const std::optional<int> first = TakeDigits(text, 1, 2);
  if (!first || text.empty()) return std::nullopt;
  const char mark = text.front();
  if (!TakeOneOf(text, "/.-")) return std::nullopt;
  const std::optional<int> second = TakeDigits(text, 1, 2);
  if (!second || !TakeOneOf(text, std::string_view(&mark, 1))) return std::nullopt;
  const std::optional<int> year = TakeDigits(text, 4, 4);
  if (!year || !TakeOneOf(text, "Tt ,;\t")) return std::nullopt;
  while (TakeOneOf(text, " ")) {
  }
  const bool isDayFirst = mark == '.' || *first > 12;
  const bool turned = isDayFirst || (dayFirst && *second <= 12);
  std::optional<LoggerTime> time =
      OnDay(turned ? DayOf(*year, *second, *first) : DayOf(*year, *first, *second), text);
  if (time) time->isDayFirst = isDayFirst;
  return time;
}

// 14:08:45.876
std::optional<LoggerTime> TimeForm(std::string_view text, bool) {
  const std::optional<TimeOfDay> time = TakeTimeOfDay(text);
  if (!time) return std::nullopt;
  return LoggerTime{.clock = LoggerTime::Clock::OfDay, .seconds = time->seconds, .isFine = time->hasDecimals};
}

constexpr Form Forms[] = {EpochTime, IsoForm, DayOfYearForm, DateForm, TimeForm};

// The c field of a tag block: "\s:src,c:1522258800*hh\".
std::string_view TagTime(std::string_view prefix) {
  if (prefix.empty() || prefix.back() != '\\') return {};
  prefix.remove_suffix(1);
  const std::size_t begin = prefix.rfind('\\');
  if (begin == std::string_view::npos) return {};
  const std::string_view block = prefix.substr(begin);
  for (std::size_t at = block.find("c:"); at != std::string_view::npos; at = block.find("c:", at + 1)) {
    if (at > 0 && (block[at - 1] == '\\' || block[at - 1] == ',')) return block.substr(at + 2);
  }
  return {};
}

}  // namespace

LoggerTime Dated(const LoggerTime& time) {
  if (time.clock != LoggerTime::Clock::Absolute || time.seconds >= FirstDate) return time;
  return {.clock = LoggerTime::Clock::OfDay, .seconds = time.seconds, .isFine = time.isFine};
}

LoggerTime LoggerTimeOf(std::string_view prefix, bool dayFirst) {
  if (prefix.size() > MostPrefix) prefix.remove_prefix(prefix.size() - MostPrefix);
  if (const std::string_view tag = TagTime(prefix); !tag.empty()) {
    if (const std::optional<LoggerTime> time = EpochTime(tag, dayFirst)) return Dated(*time);
  }
  for (std::size_t at = 0; at < prefix.size(); ++at) {
    const char before = at > 0 ? prefix[at - 1] : ' ';
    if (!IsDigit(prefix[at]) || IsDigit(before) || before == '.' || before == ':') continue;
    for (const Form form : Forms) {
      if (const std::optional<LoggerTime> time = form(prefix.substr(at), dayFirst)) return Dated(*time);
    }
  }
  return {};
}

}  // namespace sondrix
