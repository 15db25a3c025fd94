#include "sounders/nmea/nmea_decoder.h"

#include "core/text.h"
#include "sounders/common/calendar.h"
#include "sounders/nmea/nmea_json.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace sondrix {

namespace {

constexpr std::size_t ShortestAddress = 3;
constexpr int CounterDays = 1024 * 7;  // after which old receivers begin their dates anew

bool IsAddress(std::string_view text) {
  return text.size() >= ShortestAddress && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (Lower(c) >= 'a' && Lower(c) <= 'z');
         });
}

}  // namespace

void NmeaDecoder::Reset() {
  badRows_ = wrongChecksums_ = turnedDates_ = unsetDates_ = 0;
  hasSentences_ = false;
}

LoggerTime NmeaDecoder::TimeOf(std::string_view prefix) {
  LoggerTime time = LoggerTimeOf(prefix, isDayFirst_);
  isDayFirst_ = isDayFirst_ || time.isDayFirst;
  if (time.clock == LoggerTime::Clock::Absolute && time.needsZone) {
    assumedZone_ = true;
    if (options_.toUtc) time.seconds = options_.toUtc(time.seconds);
    if (!std::isfinite(time.seconds)) return {};
  }
  return time;
}

void NmeaDecoder::MendDate(std::optional<int>& day, const LoggerTime& logged) {
  if (!day) return;
  if (logged.clock == LoggerTime::Clock::Absolute &&
      std::abs(logged.seconds / SecondsOfDay - *day - CounterDays) < 2) {
    *day += CounterDays;
    ++turnedDates_;
  }
  if (*day * SecondsOfDay >= FirstDate) return;
  day.reset();
  ++unsetDates_;
}

void NmeaDecoder::AddSentence(const NmeaSentence& sentence, const LoggerTime& logged) {
  if (sentence.address.empty()) return;  // "$$"
  if (sentence.checksum == Checksum::Wrong) {
    ++wrongChecksums_;
    return;
  }
  hasSentences_ = true;
  if (sentence.kind == SentenceKind::Other) {
    if (sentence.checksum == Checksum::Missing && !IsAddress(sentence.address)) ++badRows_;
    return;
  }
  const NmeaFields fields(sentence.fields);
  if (IsFix(sentence.kind)) {
    if (std::optional<NmeaFix> fix = FixOf(sentence.kind, fields)) {
      MendDate(fix->day, logged);
      events_.push_back({sentence.kind, KeyOf(sentence.address), logged, *fix, {}});
      return;
    }
  } else if (const std::optional<ToldDepth> depth = DepthOf(sentence.kind, fields)) {
    events_.push_back({sentence.kind, KeyOf(sentence.address), logged, {}, *depth});
    return;
  }
  ++badRows_;
}

void NmeaDecoder::AddJson(std::string_view prefix, std::string_view json) {
  const bool isDelta = json.find("\"updates\"") != std::string_view::npos;
  const std::vector<std::string> lines = isDelta ? std::vector<std::string>() : JsonLogLines(json);
  for (const std::string& line : lines) AddLine(std::string(prefix) + " " + line);
  if (!lines.empty()) return;
  if (AddDeltaEvents(json, prefix.empty() ? LoggerTime() : TimeOf(prefix), vessel_, events_)) {
    hasSentences_ = true;
  } else {
    ++badRows_;
  }
}

void NmeaDecoder::AddLine(std::string_view line) {
  const std::size_t start = line.find_first_of("$!{");
  if (start == std::string_view::npos) {
    // A head and comments stand before the first sentence or behind a "#".
    if (hasSentences_ && line.find_first_not_of(" \t") != std::string_view::npos && line.front() != '#')
      ++badRows_;
    return;
  }
  const std::string_view prefix = line.substr(0, start);
  if (line[start] == '{') return AddJson(prefix, line.substr(start));
  const LoggerTime logged = prefix.empty() ? LoggerTime() : TimeOf(prefix);
  SentenceScan scan(line.substr(start));
  while (const std::optional<NmeaSentence> sentence = scan.Next()) AddSentence(*sentence, logged);
}

std::span<const NmeaEvent> NmeaDecoder::Decode(std::string_view line) {
  events_.clear();
  AddLine(line);
  return events_;
}

}  // namespace sondrix
