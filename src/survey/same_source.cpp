#include "survey/same_source.h"

#include "core/files.h"
#include "geo/constants.h"
#include "geo/near_places.h"
#include "survey/sounding_probe.h"
#include "survey/survey.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>

namespace sondrix {
namespace {

// How far apart the places of the same sounding may be. A recorder keeps whole Mercator metres, which one
// program mends and another takes as they are. Where time and fine depths tell strangers apart, there is room
// for a transducer that was put into its place.
constexpr double MetresOfFine = 5, MetresOfRecording = 3, MetresOfTables = 1;

// A table made of a log has a depth at the last fix before it, and the log's own depths lie between the
// fixes: a fix interval's way apart, of a second at least.
constexpr double FixInterval = 1;         // seconds
constexpr double LongestFixInterval = 5;  // seconds
constexpr double MostOfLog = 15;          // metres

// A table's times without a zone may have been taken for another one than the recording's.
constexpr double ZoneStep = 15 * 60;      // seconds
constexpr double WidestZone = 14 * 3600;  // seconds
constexpr double TimeSlack = 2;           // seconds
constexpr std::size_t MaxShifts = 4;

enum class Rank { Recording, Log, Table };

Rank RankOf(const Trip& trip) {
  if (trip.kind.starts_with("SL")) return Rank::Recording;
  if (trip.kind.starts_with("NMEA")) return Rank::Log;
  return Rank::Table;
}

// Whether a source tells the trip of another one.
bool IsRetold(const Trip& trip) { return trip.name.find(FileNameOf(trip.path)) == std::string::npos; }

// Metres that the boat makes from one fix to the next, all but one time in twenty.
double FixWayOf(const SoundingList& soundings) {
  constexpr double perMetre = 4;
  std::array<std::size_t, static_cast<std::size_t>(MostOfLog * perMetre)> counts{};
  std::size_t count = 0;
  const Sounding* from = nullptr;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const Sounding& to = soundings[i];
    if (!to.HasPosition()) continue;
    const double interval = from == nullptr ? Unknown : to.time - from->time;
    if (interval < FixInterval - TimeSlack * 0.01) continue;
    if (from != nullptr && !(interval > LongestFixInterval)) {
      const double north = (to.latitude - from->latitude) * MetresOfDegree;
      const double east = (to.longitude - from->longitude) * MetresOfDegree * std::cos(to.latitude * Deg2Rad);
      const double way = std::min(std::hypot(north, east) * perMetre, counts.size() - 1.0);
      ++counts[static_cast<std::size_t>(way)];
      ++count;
    }
    from = &to;
  }
  std::size_t at = 0;
  for (std::size_t below = counts[0]; below * 20 < count * 19; below += counts[++at]) {
  }
  return static_cast<double>(at + 1) / perMetre;
}

struct Candidate {
  std::size_t trip = 0;
  Rank rank = Rank::Table;
  bool isRetold = false;
  SoundingSpan span;
  double fixWay = 0;  // metres, of a log
};

bool MayHold(const SoundingSpan& whole, const SoundingSpan& part) {
  const double north = 2 * MetresOfFine / MetresOfDegree;
  const double east = north / std::max(0.01, std::cos(part.north * Deg2Rad));
  return part.west >= whole.west - east && part.east <= whole.east + east &&
         part.south >= whole.south - north && part.north <= whole.north + north;
}

// The times of the whole less those of the part, as far as they can be the same trip.
std::vector<double> ShiftsOf(const Candidate& whole, const Candidate& part) {
  std::vector<double> shifts;
  const bool mayDiffer = whole.rank <= Rank::Log && part.rank >= Rank::Table;
  const double widest = mayDiffer ? WidestZone : 0;
  for (double size = 0; size <= widest && shifts.size() < MaxShifts; size += ZoneStep) {
    for (const double shift : {size, -size}) {
      const bool isInside = part.span.from + shift >= whole.span.from - TimeSlack &&
                            part.span.to + shift <= whole.span.to + TimeSlack;
      if (isInside && (shift != 0 || shifts.empty())) shifts.push_back(shift);
    }
  }
  return shifts;
}

double MetresOf(const Candidate& whole, const Candidate& part, bool usesTime) {
  constexpr double coarse = 0.05;  // metres
  if (usesTime && whole.span.depthUnit < coarse && part.span.depthUnit < coarse) return MetresOfFine;
  return whole.rank == Rank::Recording ? MetresOfRecording : MetresOfTables;
}

bool Repeats(SoundingProbe& probe, const Candidate& part, const Candidate& whole, const Trip& wholeTrip) {
  if (!MayHold(whole.span, part.span)) return false;
  const bool usesTime = whole.span.HasTimes() && part.span.HasTimes();
  const std::vector<double> shifts = usesTime ? ShiftsOf(whole, part) : std::vector<double>{0};
  return std::any_of(shifts.begin(), shifts.end(), [&](double shift) {
    return probe.StandsIn(
        wholeTrip.soundings, whole.span,
        {usesTime, shift, MetresOf(whole, part, usesTime), part.rank == Rank::Table ? whole.fixWay : 0});
  });
}

std::string WordsOf(const Candidate& part, const Candidate& whole, const Survey& survey) {
  const Trip& trip = survey.trips[whole.trip];
  const bool isSame = part.span.count * 100 >= whole.span.count * 99;
  const std::string& name = trip.name == survey.trips[part.trip].name ? trip.path : trip.name;
  return (isSame ? "the same soundings as " : "its soundings stand in ") + name;
}

// A table or track into which several trips were put: of the others, the one that has the most soundings and
// how many more have some. None where it isn't.
struct Collected {
  std::size_t trip = 0, more = 0;
};
std::optional<Collected> CollectedFrom(SoundingProbe& probe, const Candidate& whole,
                                       std::span<const Candidate> others, const Survey& survey) {
  constexpr double mostOfWhole = 0.9;  // else it is the same trip once more
  if (whole.rank < Rank::Table || !whole.span.HasTimes()) return std::nullopt;
  std::vector<const SoundingList*> lists;
  std::vector<std::size_t> trips;
  for (const Candidate& other : others) {
    const bool isSmaller =
        static_cast<double>(other.span.count) < mostOfWhole * static_cast<double>(whole.span.count);
    if (other.trip == whole.trip || !isSmaller || !other.span.HasTimes()) continue;
    if (other.span.to < whole.span.from || other.span.from > whole.span.to) continue;
    lists.push_back(&survey.trips[other.trip].soundings);
    trips.push_back(other.trip);
  }
  const std::vector<std::size_t> answering = probe.StandsAmong(lists);
  if (answering.size() < 2) return std::nullopt;
  const auto fullest =
      std::max_element(answering.begin(), answering.end(),
                       [&](std::size_t a, std::size_t b) { return lists[a]->size() < lists[b]->size(); });
  return Collected{trips[*fullest], answering.size() - 1};
}

}  // namespace

std::vector<RepeatedTrip> FindRepeatedTrips(const Survey& survey) {
  if (survey.trips.size() < 2) return {};
  std::vector<Candidate> candidates;
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    const Trip& trip = survey.trips[t];
    Candidate candidate = {t, RankOf(trip), IsRetold(trip), SpanOf(trip.soundings)};
    if (candidate.rank == Rank::Log) candidate.fixWay = FixWayOf(trip.soundings);
    if (candidate.span.count > 0) candidates.push_back(candidate);
  }
  std::sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
    return std::tuple(a.rank, b.span.count, a.isRetold, a.trip) <
           std::tuple(b.rank, a.span.count, b.isRetold, b.trip);
  });
  std::vector<RepeatedTrip> repeated;
  std::vector<Candidate> kept;
  for (const Candidate& part : candidates) {
    SoundingProbe probe(survey.trips[part.trip].soundings, part.span);
    const auto whole = std::find_if(kept.begin(), kept.end(), [&](const Candidate& other) {
      return Repeats(probe, part, other, survey.trips[other.trip]);
    });
    if (whole != kept.end()) {
      repeated.push_back({part.trip, whole->trip, WordsOf(part, *whole, survey)});
    } else if (const auto from = CollectedFrom(probe, part, candidates, survey)) {
      const std::string more = std::to_string(from->more) + (from->more == 1 ? " other" : " others");
      repeated.push_back({part.trip, from->trip,
                          "its soundings stand in " + survey.trips[from->trip].name + " and " + more});
    } else {
      kept.push_back(part);
    }
  }
  std::sort(repeated.begin(), repeated.end(),
            [](const RepeatedTrip& a, const RepeatedTrip& b) { return a.trip < b.trip; });
  return repeated;
}

}  // namespace sondrix
