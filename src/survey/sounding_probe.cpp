#include "survey/sounding_probe.h"

#include "geo/constants.h"
#include "geo/near_places.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace sondrix {
namespace {

constexpr std::size_t MaxRows = 2048;
constexpr std::size_t FirstRows = 64;  // that are looked for first
constexpr std::size_t MaxOfKey = 32;   // rows of one cell or second; more tell nothing new
constexpr std::uint32_t None = 0xFFFF'FFFF;
constexpr int HeadBits = 14;

// Times may be cut to whole seconds or rounded.
constexpr double TimeReach = 1.001;
constexpr double ExactTime = 0.0015;       // seconds
constexpr double ExactDegrees = 1.5e-8;    // both sides rounded to 8 decimals
constexpr double RoundingOfBoth = 0.0006;  // metres, of depths that are kept in millimetres

// The depths about a row's are told apart in 64 steps, to so many metres above and below at least.
constexpr double LeastBand = 0.05;
constexpr double BandOfTolerance = 5;

constexpr double MostMissing = 0.03;       // of the rows
constexpr double MostMissingFirst = 0.15;  // of the first
constexpr double MostOfStranger = 0.1;     // of what a stranger would miss
constexpr double LeastSurprise = 5;        // rows that a stranger would miss

// Fibonacci hashing (Knuth, The Art of Computer Programming 3, 6.4).
std::size_t HeadOf(std::int64_t key) {
  return static_cast<std::uint64_t>(key) * 0x9E37'79B9'7F4A'7C15 >> (64 - HeadBits);
}

bool IsUsable(const Sounding& sounding) { return sounding.HasPosition() && sounding.recorded > 0; }

double ToleranceOf(double unit) { return unit > 0.001 ? unit / 2 + RoundingOfBoth : unit + RoundingOfBoth; }
double BandOf(double tolerance) { return std::max(LeastBand, BandOfTolerance * tolerance); }

// The steps of the band that a depth explains, which lies so much below the row's.
std::uint64_t StepsOf(double below, double tolerance) {
  const double band = BandOf(tolerance);
  const auto step = [band](double depth) {
    return std::clamp(static_cast<int>((depth + band) / (2 * band) * 64), 0, 63);
  };
  if (std::abs(below) > band + tolerance) return 0;
  const int first = step(below - tolerance);
  const int last = step(below + tolerance);
  return (~std::uint64_t{0} >> (63 - (last - first))) << first;
}

}  // namespace

SoundingSpan SpanOf(const SoundingList& soundings) {
  SoundingSpan span;
  std::size_t timed = 0;
  bool areTenths = true, areHundredths = true;
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (!IsUsable(sounding)) continue;
      ++span.count;
      span.west = std::fmin(span.west, sounding.longitude);
      span.east = std::fmax(span.east, sounding.longitude);
      span.south = std::fmin(span.south, sounding.latitude);
      span.north = std::fmax(span.north, sounding.latitude);
      span.from = std::fmin(span.from, sounding.time);
      span.to = std::fmax(span.to, sounding.time);
      if (sounding.HasTime()) ++timed;
      const long long millimetres = std::llround(sounding.recorded * 1e3);
      areTenths = areTenths && millimetres % 100 == 0;
      areHundredths = areHundredths && millimetres % 10 == 0;
    }
  }
  if (10 * timed < 9 * span.count) span.from = span.to = Unknown;
  span.depthUnit = areTenths ? 0.1 : areHundredths ? 0.01 : 0.001;
  return span;
}

SoundingProbe::SoundingProbe(const SoundingList& soundings, const SoundingSpan& span) : span_(span) {
  if (span.count == 0) return;
  metresEast_ = MetresOfDegree * std::cos((span.south + span.north) / 2 * Deg2Rad);
  const std::size_t rows = std::min(MaxRows, span.count);
  rows_.reserve(rows);
  std::size_t usable = 0;
  for (std::size_t b = 0; b < soundings.BlockCount() && rows_.size() < rows; ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (!IsUsable(sounding)) continue;
      // The last is among them, the first nearly.
      if (++usable * rows / span.count == rows_.size()) continue;
      rows_.push_back({.longitude = sounding.longitude,
                       .latitude = sounding.latitude,
                       .time = sounding.time,
                       .depth = sounding.recorded,
                       .isHit = false,
                       .isExact = false,
                       .isIndexed = false,
                       .near = 0});
    }
  }
}

std::int64_t SoundingProbe::KeyOf(const ProbeReach& reach, double longitude, double latitude,
                                  double time) const {
  if (reach.usesTime) return static_cast<std::int64_t>(std::floor(time - span_.from));
  const double x = (longitude - span_.west) * metresEast_ / (reach.metres + reach.back);
  const double y = (latitude - span_.south) * MetresOfDegree / (reach.metres + reach.back);
  return static_cast<std::int64_t>(std::floor(y)) * (std::int64_t{1} << 32) +
         static_cast<std::int64_t>(std::floor(x));
}

bool SoundingProbe::IsFull(std::int64_t key) const {
  std::size_t count = 0;
  for (std::uint32_t e = heads_[HeadOf(key)]; e != None; e = entries_[e].next) {
    if (entries_[e].key == key && ++count == MaxOfKey) return true;
  }
  return false;
}

void SoundingProbe::Insert(std::int64_t key, std::uint32_t row) {
  std::uint32_t& head = heads_[HeadOf(key)];
  entries_.push_back({key, row, head});
  head = static_cast<std::uint32_t>(entries_.size() - 1);
}

void SoundingProbe::Index(const ProbeReach& reach, std::size_t every) {
  heads_.assign(std::size_t{1} << HeadBits, None);
  entries_.clear();
  for (std::uint32_t r = 0; r < rows_.size(); ++r) {
    Row& row = rows_[r];
    row.isHit = row.isExact = false;
    row.near = 0;
    row.isIndexed = r % every == 0 && !(reach.usesTime && std::isnan(row.time));
    if (!row.isIndexed) continue;
    const std::int64_t key = KeyOf(reach, row.longitude, row.latitude, row.time);
    row.isIndexed = !IsFull(key);
    if (!row.isIndexed) continue;
    // In the cells around it too, so that a sounding looks into its own alone.
    const std::int64_t lines = reach.usesTime ? 0 : 1;
    for (std::int64_t line = -lines; line <= lines; ++line) {
      for (std::int64_t next = -1; next <= 1; ++next) Insert(key + line * (std::int64_t{1} << 32) + next, r);
    }
  }
}

double SoundingProbe::DistanceOf(const Row& row, const Sounding& sounding, const Sounding& before,
                                 double back) const {
  const double east = (row.longitude - sounding.longitude) * metresEast_;
  const double north = (row.latitude - sounding.latitude) * MetresOfDegree;
  const double backEast = (before.longitude - sounding.longitude) * metresEast_;
  const double backNorth = (before.latitude - sounding.latitude) * MetresOfDegree;
  const double way = std::hypot(backEast, backNorth);
  if (back == 0 || !(way > 0)) return std::hypot(east, north);
  const double along = std::clamp((east * backEast + north * backNorth) / way, 0.0, back);
  return std::hypot(east - along * backEast / way, north - along * backNorth / way);
}

bool SoundingProbe::Meet(Row& row, const Sounding& sounding, const Sounding& before, const ProbeReach& reach,
                         double tolerance) const {
  const double late = sounding.time - reach.shift - row.time;
  if (reach.usesTime && !(std::abs(late) <= TimeReach)) return false;
  const double east = sounding.longitude - row.longitude;
  const double north = sounding.latitude - row.latitude;
  if (DistanceOf(row, sounding, before, reach.back) > reach.metres) return false;
  const double below = static_cast<double>(sounding.recorded) - row.depth;
  row.near |= StepsOf(below, tolerance);
  const bool isHit = std::abs(below) <= tolerance;
  const bool isExact =
      std::abs(late) <= ExactTime && std::abs(east) <= ExactDegrees && std::abs(north) <= ExactDegrees;
  row.isHit = row.isHit || isHit;
  const bool isNew = isExact && !row.isExact;
  row.isExact = row.isExact || isExact;
  return isNew;
}

bool SoundingProbe::IsLikely() const {
  double rows = 0, missing = 0;
  for (const Row& row : rows_) {
    if (!row.isIndexed) continue;
    ++rows;
    if (!row.isHit && !row.isExact) ++missing;
  }
  return missing <= MostMissingFirst * rows;
}

bool SoundingProbe::IsExact() const {
  double rows = 0, exact = 0;
  for (const Row& row : rows_) {
    if (!row.isIndexed) continue;
    ++rows;
    if (row.isExact) ++exact;
  }
  return rows >= LeastSurprise && rows - exact <= MostMissing * rows;
}

bool SoundingProbe::IsAnswered(double tolerance) const {
  double rows = 0, missing = 0, strange = 0;
  for (const Row& row : rows_) {
    if (!row.isIndexed) continue;
    ++rows;
    if (!row.isHit) ++missing;
    strange += 1 - std::popcount(row.near | StepsOf(0, tolerance)) / 64.0;
  }
  return strange >= LeastSurprise && missing <= MostMissing * rows && missing <= MostOfStranger * strange;
}

std::size_t SoundingProbe::Look(const SoundingList& other, const ProbeReach& reach, double tolerance) {
  const double eastReach = (reach.metres + reach.back) / metresEast_;
  const double northReach = (reach.metres + reach.back) / MetresOfDegree;
  std::size_t exact = 0;
  Sounding last, before;  // before: the last at another place
  for (std::size_t b = 0; b < other.BlockCount(); ++b) {
    for (const Sounding& sounding : other.Block(b)) {
      if (sounding.longitude != last.longitude || sounding.latitude != last.latitude) before = last;
      last = sounding;
      if (!(sounding.longitude >= span_.west - eastReach && sounding.longitude <= span_.east + eastReach &&
            sounding.latitude >= span_.south - northReach && sounding.latitude <= span_.north + northReach &&
            sounding.recorded > 0)) {
        continue;
      }
      const double time = sounding.time - reach.shift;
      if (reach.usesTime && !(time >= span_.from - TimeReach && time <= span_.to + TimeReach)) continue;
      const std::int64_t key = KeyOf(reach, sounding.longitude, sounding.latitude, time);
      for (std::uint32_t e = heads_[HeadOf(key)]; e != None; e = entries_[e].next) {
        if (entries_[e].key != key) continue;
        if (Meet(rows_[entries_[e].row], sounding, before, reach, tolerance)) ++exact;
      }
    }
  }
  return exact;
}

bool SoundingProbe::StandsIn(const SoundingList& other, const SoundingSpan& otherSpan,
                             const ProbeReach& reach) {
  const double tolerance = ToleranceOf(std::max(span_.depthUnit, otherSpan.depthUnit));
  if (rows_.size() > 2 * FirstRows) {
    Index(reach, rows_.size() / FirstRows);
    Look(other, reach, tolerance);
    if (!IsLikely()) return false;
  }
  Index(reach, 1);
  Look(other, reach, tolerance);
  return IsExact() || IsAnswered(tolerance);
}

std::vector<std::size_t> SoundingProbe::StandsAmong(std::span<const SoundingList* const> others) {
  const ProbeReach reach = {.usesTime = true, .shift = 0, .metres = 1, .back = 0};
  Index(reach, 1);
  std::vector<std::size_t> answering;
  for (std::size_t i = 0; i < others.size(); ++i) {
    if (Look(*others[i], reach, RoundingOfBoth) > 0) answering.push_back(i);
  }
  if (!IsExact()) answering.clear();
  return answering;
}

}  // namespace sondrix
