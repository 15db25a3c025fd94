#include "sounders/nmea/nmea_reader.h"

#include "sounders/common/calendar.h"
#include "sounders/common/line_reader.h"
#include "sounders/nmea/nmea_clock.h"
#include "sounders/nmea/nmea_decoder.h"
#include "sounders/nmea/nmea_json.h"
#include "sounders/nmea/nmea_sources.h"
#include "sounders/nmea/nmea_track.h"

#include <cmath>
#include <optional>
#include <string>

namespace sondrix {

namespace {

// Sentences of others in a row, with nothing from the one in use. A ping is told by a few sentences at most.
constexpr unsigned DepthPatience = 16, FixPatience = 10;
// A source needs this part of the most frequent one's count to be preferred to it.
constexpr double DepthLeast = 0.25, FixLeast = 0.5;
constexpr double SameMoment = 1e-4;  // seconds

// Smaller is better: position and depth in one, then from the surface, then the finer sentence.
int DepthPreference(const NmeaEvent& event) {
  switch (event.kind) {
    case SentenceKind::Odc:
      return 0;
    case SentenceKind::Dpt:
      return event.depth.isFromSurface ? 1 : 3;
    case SentenceKind::Dbs:
      return 2;
    case SentenceKind::Dbt:
      return 4;
    default:
      return 5;
  }
}

// The most decimals, then GGA, RMC, GNS, GLL.
int FixPreference(const NmeaEvent& event) { return static_cast<int>(event.kind) - 16 * event.fix.decimals; }

// Of the lines of a head with anything in them.
struct LineCounts {
  double lines = 0;
  double certain = 0;  // a sentence with its checksum, or a SignalK delta
  double likely = 0;   // without a checksum, known or not
  double known = 0;

  void Add(std::string_view line);
  void AddSentences(std::string_view text);
};
// Loggers put other lines among the sentences; without checksums sentences have to be the most.
constexpr double LeastShare = 0.1, LeastShareUnchecked = 0.5;

void LineCounts::Add(std::string_view line) {
  if (line.find_first_not_of(" \t") == std::string_view::npos || line.front() == '#') return;
  ++lines;
  const std::size_t start = line.find_first_of("$!{");
  if (start == std::string_view::npos) return;
  if (line[start] == '{') {
    if (line.find("\"updates\"") != std::string_view::npos) {
      ++certain;
    } else {
      for (const std::string& text : JsonLogLines(line.substr(start))) AddSentences(text);
    }
    return;
  }
  AddSentences(line.substr(start));
}

void LineCounts::AddSentences(std::string_view text) {
  SentenceScan scan(text);
  bool isCertain = false, isLikely = false, isKnown = false;
  while (const std::optional<NmeaSentence> sentence = scan.Next()) {
    isCertain = isCertain || (sentence->checksum == Checksum::Right && sentence->address.size() > 2);
    isLikely = isLikely || (sentence->checksum == Checksum::Missing && sentence->address.size() == 5 &&
                            !sentence->fields.empty());
    isKnown = isKnown || (isLikely && sentence->kind != SentenceKind::Other);
  }
  certain += isCertain ? 1 : 0;
  likely += isLikely && !isCertain ? 1 : 0;
  known += isKnown ? 1 : 0;
}

class NmeaReading {
 public:
  NmeaReading(const ReadOptions& options, SoundingList& soundings)
      : decoder_(options), track_(soundings), zoneName_(options.zoneName) {}

  void Look(std::string_view path, const ReadWatch& watch, Reading& reading);
  void Read(std::string_view path, const ReadWatch& watch, Reading& reading);

 private:
  void TakeFix(const NmeaEvent& event);
  void TakeDepth(const NmeaEvent& event);
  void SetDay(double ofDay, int day);
  void Tell(Reading& reading) const;

  NmeaDecoder decoder_;
  NmeaTrack track_;
  NmeaClock clock_;
  NmeaSources depths_{DepthPatience, DepthLeast}, positions_{FixPatience, FixLeast}, dates_{FixPatience, 0};
  double epochOfDay_ = Unknown, epochClock_ = Unknown;
  double counted_ = 0;  // fixes without any time
  bool isFromSurface_ = false, isPlaced_ = false;
  std::string zoneName_;
};

void NmeaReading::Look(std::string_view path, const ReadWatch& watch, Reading& reading) {
  ReadWatch uncounted = {watch.isToEnd, nullptr};
  LineReader lines(path, uncounted);
  while (const std::optional<std::string_view> line = lines.Next()) {
    for (const NmeaEvent& event : decoder_.Decode(*line)) {
      if (IsDepth(event.kind)) {
        depths_.Count(event.address, event.depth.metres > 0, DepthPreference(event));
      } else {
        positions_.Count(event.address, event.fix.HasPosition(), FixPreference(event));
        dates_.Count(event.address, event.fix.day.has_value(), event.kind == SentenceKind::Rmc ? 0 : 1);
      }
    }
  }
  if (depths_.IsEmpty()) {
    if (lines.LongLines() > 0) throw CantRead("its lines are longer than those of any log");
    throw CantRead("no depth in its sentences");
  }
  depths_.Rank(false);
  positions_.Rank(true);
  dates_.Rank(false);
  decoder_.Reset();
  reading.PassOver(PassedOver::LongLines, lines.LongLines());
}

void NmeaReading::Read(std::string_view path, const ReadWatch& watch, Reading& reading) {
  LineReader lines(path, watch);
  std::uint64_t badRows = 0, wrongChecksums = 0;  // before the last line
  bool isCut = false;
  while (const std::optional<std::string_view> line = lines.Next()) {
    badRows = decoder_.BadRows();
    wrongChecksums = decoder_.WrongChecksums();
    isCut = lines.IsCut();
    for (const NmeaEvent& event : decoder_.Decode(*line)) {
      if (IsDepth(event.kind)) {
        TakeDepth(event);
      } else {
        TakeFix(event);
      }
    }
  }
  track_.Finish();
  // A last sentence that the end of the file cuts is no bad one.
  if (!isCut || (badRows == decoder_.BadRows() && wrongChecksums == decoder_.WrongChecksums())) {
    badRows = decoder_.BadRows();
    wrongChecksums = decoder_.WrongChecksums();
  } else {
    reading.PassOver(PassedOver::CutEnd);
  }
  reading.PassOver(PassedOver::BadRows, badRows);
  reading.PassOver(PassedOver::WrongChecksums, wrongChecksums);
  Tell(reading);
}

void NmeaReading::TakeDepth(const NmeaEvent& event) {
  // What tells that there is no depth is a sounding, where the source in use tells it.
  if (!depths_.Takes(event.address, event.depth.metres > 0)) return;
  isFromSurface_ = isFromSurface_ || event.depth.isFromSurface;
  if (event.kind == SentenceKind::Odc) {
    isPlaced_ = true;
    return track_.AddPlaced(event.depth.metres, event.depth.longitude, event.depth.latitude);
  }
  track_.AddDepth(event.depth.metres, event.logged);
}

void NmeaReading::SetDay(double ofDay, int day) {
  const bool wasDated = clock_.IsDated();
  const double shift = clock_.SetDay(ofDay, day);
  if (shift == 0 || (wasDated && ofDay != epochOfDay_)) return;
  track_.ShiftLastEpoch(shift);
  epochClock_ += shift;
}

void NmeaReading::TakeFix(const NmeaEvent& event) {
  const NmeaFix& fix = event.fix;
  const bool isAbsolute = event.logged.clock == LoggerTime::Clock::Absolute;
  const bool hasTime = !std::isnan(fix.ofDay);
  if (fix.day && hasTime && dates_.Takes(event.address, true)) SetDay(fix.ofDay, *fix.day);
  if (event.kind == SentenceKind::Zda || !positions_.Takes(event.address, fix.HasPosition())) return;
  if (hasTime && dates_.IsEmpty() && isAbsolute)
    SetDay(fix.ofDay, static_cast<int>(std::lround((event.logged.seconds - fix.ofDay) / SecondsOfDay)));
  NmeaEpoch epoch = {.logged = event.logged, .longitude = fix.longitude, .latitude = fix.latitude};
  epoch.isTime = hasTime || isAbsolute;
  if (hasTime) {
    epoch.clock = clock_.At(fix.ofDay);
  } else if (isAbsolute || event.logged.isFine) {
    epoch.clock = event.logged.seconds;
  } else {
    epoch.clock = ++counted_;
  }
  if (std::abs(epoch.clock - epochClock_) < SameMoment) {
    if (epoch.HasPosition()) track_.MoveLastEpoch(epoch.longitude, epoch.latitude);
    return;
  }
  track_.AddEpoch(epoch);
  epochClock_ = epoch.clock;
  epochOfDay_ = fix.ofDay;
}

void NmeaReading::Tell(Reading& reading) const {
  const bool needsPositions = !isPlaced_;
  reading.takenFor.push_back("depths: " + depths_.Taken() + (isFromSurface_ ? ", from the surface" : ""));
  if (needsPositions && !positions_.IsEmpty()) reading.takenFor.push_back("positions: " + positions_.Taken());
  if (dates_.IsEmpty() && decoder_.AssumedZone())
    reading.takenFor.push_back("times of the logger: " + (zoneName_.empty() ? "UTC assumed" : zoneName_));
  if (decoder_.TurnedDates() > 0)
    reading.remarks.emplace_back("its dates are 1024 weeks early by the logger's clock, and put right");
  if (decoder_.UnsetDates() > 0)
    reading.remarks.push_back(std::to_string(decoder_.UnsetDates()) + std::string(BeforeFirstDate));
  if (depths_.LeftOut() > 0)
    reading.remarks.push_back(std::to_string(depths_.LeftOut()) + " depths told by other sentences too");
  if (needsPositions && positions_.IsEmpty()) {
    reading.remarks.emplace_back("no positions in its sentences");
  } else if (needsPositions && !track_.HasPlaced()) {
    reading.remarks.emplace_back("no two fixes near enough in time to place a depth between them");
  }
}

}  // namespace

bool IsNmeaLog(const SourceHead& head) {
  LineCounts counts;
  std::string_view text = head.Text();
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    counts.Add(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  if (counts.certain > 0) return counts.certain + counts.likely >= LeastShare * counts.lines;
  return counts.known > 0 && counts.likely >= LeastShareUnchecked * counts.lines;
}

void ReadNmeaLog(std::string_view path, const ReadOptions& options, const ReadWatch& watch,
                 Reading& reading) {
  TripReading& trip = reading.trips.emplace_back();
  NmeaReading nmea(options, trip.soundings);
  nmea.Look(path, watch, reading);
  nmea.Read(path, watch, reading);
}

}  // namespace sondrix
