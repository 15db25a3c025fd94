#pragma once

#include "sounders/common/reading.h"
#include "sounders/nmea/nmea_depth.h"
#include "sounders/nmea/nmea_fix.h"
#include "sounders/nmea/nmea_prefix.h"
#include "sounders/nmea/nmea_sentence.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What one sentence, or one value of a JSON line, tells.
struct NmeaEvent {
  SentenceKind kind = SentenceKind::Other;  // a fix or a depth
  AddressKey address = 0;                   // whose; values of JSON lines have addresses made up for them
  LoggerTime logged;                        // in UTC where it is absolute
  NmeaFix fix = {};
  ToldDepth depth = {};
};

// Which vessel's values count in the JSON lines.
struct DeltaVessel {
  std::string own;  // as a line said; empty: none did
  // That of the first line with a depth; other vessels tell where they are, but no depths.
  std::string sounding;

  bool IsOwn(std::string_view context) const;
};

// Appends what a SignalK delta tells. False where the text can't be understood; a JSON object of another kind
// tells nothing. logged: for updates without a timestamp of their own.
bool AddDeltaEvents(std::string_view json, const LoggerTime& logged, DeltaVessel& vessel,
                    std::vector<NmeaEvent>& events);

// From lines to what they tell.
class NmeaDecoder {
 public:
  explicit NmeaDecoder(const ReadOptions& options) : options_(options) {}

  // Valid until the next call.
  std::span<const NmeaEvent> Decode(std::string_view line);

  // Counted since the last Reset.
  std::uint64_t BadRows() const { return badRows_; }
  std::uint64_t WrongChecksums() const { return wrongChecksums_; }
  bool AssumedZone() const { return assumedZone_; }  // a logger's time had none
  // Of fixes with a date: that a receiver told 1024 weeks early, as the logger's clock shows, and ones before
  // FirstDate, which are none.
  std::uint64_t TurnedDates() const { return turnedDates_; }
  std::uint64_t UnsetDates() const { return unsetDates_; }
  // Counts anew; what was learnt of dates and vessels is kept.
  void Reset();

 private:
  LoggerTime TimeOf(std::string_view prefix);
  void AddLine(std::string_view line);
  void AddJson(std::string_view prefix, std::string_view json);
  void MendDate(std::optional<int>& day, const LoggerTime& logged);
  void AddSentence(const NmeaSentence& sentence, const LoggerTime& logged);

  const ReadOptions& options_;
  std::vector<NmeaEvent> events_;
  DeltaVessel vessel_;
  bool isDayFirst_ = false, hasSentences_ = false, assumedZone_ = false;
  std::uint64_t badRows_ = 0, wrongChecksums_ = 0, turnedDates_ = 0, unsetDates_ = 0;
};

}  // namespace sondrix
