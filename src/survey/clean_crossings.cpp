#include "survey/clean_crossings.h"

#include "geo/near_places.h"
#include "survey/clean_lost.h"
#include "survey/clean_spikes.h"
#include "survey/track_section.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <numbers>

namespace sondrix {
namespace {

constexpr double CellSize = 3;            // metres
constexpr int CoarseBits = 4;             // a coarse cell has 16 by 16 cells
constexpr std::uint32_t MaxLeftOut = 40;  // soundings at each end of a stretch
constexpr float OtherTimeWay = 30;        // metres
constexpr float Agreement = 1, AgreementOfDepth = 0.1F;
constexpr float Disagreement = 1, DisagreementOfDepth = 0.6F, LargeDisagreement = 7;  // metres
constexpr float FarOfDepth = 0.5F, FarDifference = 10;                                // metres
constexpr int MaxRounds = 64;

// Cells of a grid that is square in metres at one latitude.
class CellGrid {
 public:
  explicit CellGrid(double latitude)
      : east_(MetresOfDegree / CellSize * std::cos(latitude / 180 * std::numbers::pi)) {}

  std::uint64_t CellOf(const Sounding& sounding) const {
    return Key(static_cast<std::int32_t>(std::floor(sounding.longitude * east_)),
               static_cast<std::int32_t>(std::floor(sounding.latitude * (MetresOfDegree / CellSize))));
  }
  static std::uint64_t Key(std::int32_t east, std::int32_t north) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(north)) << 32) |
           static_cast<std::uint32_t>(east);
  }
  static std::int32_t East(std::uint64_t cell) { return static_cast<std::int32_t>(cell); }
  static std::int32_t North(std::uint64_t cell) { return static_cast<std::int32_t>(cell >> 32); }

 private:
  double east_;
};

// Coarse cells in which a stretch or its neighbourhood lies; now and then another one too.
class Neighbourhood {
 public:
  void Add(std::uint64_t cell) {
    const std::int32_t east = CellGrid::East(cell) >> CoarseBits, north = CellGrid::North(cell) >> CoarseBits;
    for (std::int32_t n = -1; n <= 1; ++n) {
      for (std::int32_t e = -1; e <= 1; ++e) bits_->set(Slot(east + e, north + n));
    }
  }
  bool Has(std::uint64_t cell) const {
    return bits_->test(Slot(CellGrid::East(cell) >> CoarseBits, CellGrid::North(cell) >> CoarseBits));
  }

 private:
  static constexpr std::size_t Slots = std::size_t{1} << 20;
  static std::size_t Slot(std::int32_t east, std::int32_t north) {
    return (CellGrid::Key(east, north) * 0x9E3779B97F4A7C15u) >> 44;
  }
  std::unique_ptr<std::bitset<Slots>> bits_ = std::make_unique<std::bitset<Slots>>();
};

bool CanTell(const Sounding& sounding) { return sounding.fate == Fate::Used || sounding.fate == Fate::Lost; }

bool IsAtEnd(const Stretch& stretch, std::size_t index) {
  const std::uint32_t leftOut = std::min((stretch.last - stretch.first + 1) / 4, MaxLeftOut);
  return index < stretch.first + leftOut || index + leftOut > stretch.last;
}

// Calls take for each pass of a trip; next is its first stretch, end that behind its last.
template <typename Take>
void ForEachPass(const SoundingList& soundings, std::span<const CrossingStretch> all, std::uint32_t next,
                 std::uint32_t end, std::uint32_t rest, const CellGrid& grid, const Take& take) {
  CellPass pass;
  bool isOpen = false;
  double way = 0;
  const Sounding* before = nullptr;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const Sounding& sounding = soundings[i];
    if (!CanTell(sounding)) continue;
    if (before != nullptr) way += WayBetween(*before, sounding);
    before = &sounding;
    while (next < end && all[next].stretch.last < i) ++next;
    const bool isInStretch = next < end && all[next].stretch.first <= i;
    if (isInStretch && IsAtEnd(all[next].stretch, i)) continue;
    const std::uint32_t owner = isInStretch ? next : rest;
    const std::uint64_t cell = grid.CellOf(sounding);
    if (!isOpen || pass.cell != cell || pass.owner != owner) {
      if (isOpen) take(pass);
      pass = {cell, sounding.recorded, sounding.recorded, static_cast<float>(way), owner};
      isOpen = true;
    }
    pass.shallowest = std::min(pass.shallowest, sounding.recorded);
    pass.deepest = std::max(pass.deepest, sounding.recorded);
  }
  if (isOpen) take(pass);
}

// The trip of an owner.
std::uint32_t TripOf(std::uint32_t owner, std::span<const CrossingStretch> stretches) {
  if (owner < stretches.size()) return stretches[owner].trip;
  return owner - static_cast<std::uint32_t>(stretches.size());
}

// Counts what two passes say of one another.
void Vote(const CellPass& a, const CellPass& b, CrossingVotes& votes) {
  const float apart = std::max({0.0F, a.shallowest - b.deepest, b.shallowest - a.deepest});
  const float depth = std::min(a.shallowest, b.shallowest);
  if (apart <= Agreement + AgreementOfDepth * depth) ++votes.agree;
  if (apart > std::min(Disagreement + DisagreementOfDepth * depth, LargeDisagreement)) ++votes.disagree;
  if (apart > std::max(FarOfDepth * depth, FarDifference)) votes.isFar = true;
}

}  // namespace

std::vector<CellPass> PassesNear(const Survey& survey, std::span<const CrossingStretch> stretches) {
  const CrossingStretch& first = stretches.front();
  const CellGrid grid(survey.trips[first.trip].soundings[first.stretch.first].latitude);
  Neighbourhood near;
  for (const CrossingStretch& crossing : stretches) {
    const SoundingList& soundings = survey.trips[crossing.trip].soundings;
    for (std::size_t i = crossing.stretch.first; i <= crossing.stretch.last; ++i) {
      if (CanTell(soundings[i])) near.Add(grid.CellOf(soundings[i]));
    }
  }
  const auto forEach = [&](const auto& take) {
    std::uint32_t next = 0;
    for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
      std::uint32_t end = next;
      while (end < stretches.size() && stretches[end].trip == t) ++end;
      const auto rest = static_cast<std::uint32_t>(stretches.size()) + t;
      ForEachPass(survey.trips[t].soundings, stretches, next, end, rest, grid, take);
      next = end;
    }
  };
  std::size_t count = 0;
  forEach([&](const CellPass& pass) { count += near.Has(pass.cell) ? 1 : 0; });
  std::vector<CellPass> passes;
  passes.reserve(count);
  forEach([&](const CellPass& pass) {
    if (near.Has(pass.cell)) passes.push_back(pass);
  });
  std::sort(passes.begin(), passes.end(), [](const CellPass& a, const CellPass& b) {
    if (a.cell != b.cell) return a.cell < b.cell;
    return a.owner != b.owner ? a.owner < b.owner : a.way < b.way;
  });
  return passes;
}

std::vector<CrossingVotes> VotesOf(std::span<const CellPass> passes,
                                   std::span<const CrossingStretch> stretches) {
  std::map<std::pair<std::uint32_t, std::uint32_t>, CrossingVotes> votes;
  const auto compare = [&](const CellPass& a, const CellPass& b) {
    if (a.owner == b.owner) return;
    const bool isSameTrip = TripOf(a.owner, stretches) == TripOf(b.owner, stretches);
    if (isSameTrip && std::abs(a.way - b.way) < OtherTimeWay) return;
    Vote(a, b, votes[std::minmax({a.owner, b.owner})]);
  };
  // Each pass with those behind it in its own cell, and with those of the four touching cells that aren't
  // compared from their side.
  constexpr std::array<std::array<std::int32_t, 2>, 4> touching{{{1, 0}, {-1, 1}, {0, 1}, {1, 1}}};
  const auto isBefore = [](const CellPass& pass, std::uint64_t cell) { return pass.cell < cell; };
  for (std::size_t begin = 0; begin < passes.size();) {
    std::size_t end = begin;
    while (end < passes.size() && passes[end].cell == passes[begin].cell) ++end;
    const std::size_t most = std::min(end, begin + 64);  // of a boat that lay at a place for a day
    for (std::size_t i = begin; i < most; ++i) {
      for (std::size_t j = i + 1; j < most; ++j) compare(passes[i], passes[j]);
    }
    for (const auto& [east, north] : touching) {
      const std::uint64_t cell = CellGrid::Key(CellGrid::East(passes[begin].cell) + east,
                                               CellGrid::North(passes[begin].cell) + north);
      auto other = std::lower_bound(passes.begin(), passes.end(), cell, isBefore);
      for (std::size_t k = 0; k < 64 && other != passes.end() && other->cell == cell; ++k, ++other) {
        for (std::size_t i = begin; i < most; ++i) compare(passes[i], *other);
      }
    }
    begin = end;
  }
  std::vector<CrossingVotes> result;
  result.reserve(votes.size());
  for (auto& [owners, vote] : votes) {
    vote.one = owners.first;
    vote.other = owners.second;
    result.push_back(vote);
  }
  return result;
}

void JudgeByVotes(std::span<CrossingStretch> stretches, std::span<const CrossingVotes> votes) {
  const std::size_t count = stretches.size();
  const auto isKept = [&](std::uint32_t owner) { return owner >= count || !stretches[owner].stretch.isLost; };
  // What two trips say of one another: agreements less disagreements.
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> trips;
  const auto verdict = [](const CrossingVotes& vote) {
    return vote.agree > vote.disagree ? 1 : vote.agree < vote.disagree ? -1 : 0;
  };
  const auto tripsOf = [&](const CrossingVotes& vote) {
    return std::minmax({TripOf(vote.one, stretches), TripOf(vote.other, stretches)});
  };
  for (const CrossingVotes& vote : votes) {
    if (isKept(vote.one) && isKept(vote.other)) trips[tripsOf(vote)] += verdict(vote);
  }
  const auto counts = [&](const CrossingVotes& vote) {
    if (verdict(vote) > 0) return 1;
    if (verdict(vote) == 0) return 0;
    const auto [one, other] = tripsOf(vote);
    return one == other || vote.isFar || trips[{one, other}] - verdict(vote) >= 0 ? -1 : 0;
  };
  for (int round = 0; round < MaxRounds; ++round) {
    // How many kept owners agree with each, less those that disagree.
    std::vector<int> standing(count, 0);
    for (const CrossingVotes& vote : votes) {
      if (vote.one < count && isKept(vote.other)) standing[vote.one] += counts(vote);
      if (vote.other < count && isKept(vote.one)) standing[vote.other] += counts(vote);
    }
    const auto standingOf = [&](std::uint32_t owner) {
      return owner < count ? standing[owner] : std::numeric_limits<int>::max();
    };
    std::vector<bool> isOutvoted(count);
    for (std::size_t s = 0; s < count; ++s) isOutvoted[s] = standing[s] < 0;
    for (const CrossingVotes& vote : votes) {
      if (counts(vote) >= 0 || !isKept(vote.one) || !isKept(vote.other)) continue;
      const int one = standingOf(vote.one), other = standingOf(vote.other);
      if (vote.one < count && other <= one) isOutvoted[vote.one] = false;
      if (vote.other < count && one <= other) isOutvoted[vote.other] = false;
    }
    bool isChanged = false;
    for (std::size_t s = 0; s < count; ++s) {
      bool& isLost = stretches[s].stretch.isLost;
      const bool isNowLost = isLost ? standing[s] <= 0 : isOutvoted[s];
      isChanged |= isNowLost != isLost;
      isLost = isNowLost;
      stretches[s].isBorneOut = standing[s] > 0;
    }
    if (!isChanged) break;
  }
}

namespace {

// What is left of a trip from which stretches were taken: the rest between them may be lost with them.
void FindLostAnew(SoundingList& soundings) {
  const float resolution = DepthResolution(soundings);
  Stretches stretches;
  TrackSection section;
  SectionReader reader(soundings);
  while (reader.Next(section)) {
    FindNoise(section, resolution);
    FindLost(section, stretches);
    section.TellFates(soundings);
  }
}

void TellFate(SoundingList& soundings, const Stretch& stretch) {
  for (std::size_t i = stretch.first; i <= stretch.last; ++i) {
    if (CanTell(soundings[i])) soundings[i].fate = stretch.isLost ? Fate::Lost : Fate::Used;
  }
}

}  // namespace

void CleanByCrossings(Survey& survey, std::span<const Stretches> stretches) {
  std::size_t count = 0;
  for (const Stretches& trip : stretches) count += trip.size();
  if (count == 0) return;
  std::vector<CrossingStretch> all;
  all.reserve(count);
  for (std::uint32_t t = 0; t < stretches.size(); ++t) {
    for (const Stretch& stretch : stretches[t]) all.push_back({t, stretch});
  }
  JudgeByVotes(all, VotesOf(PassesNear(survey, all), all));
  std::size_t next = 0;
  for (const Stretches& trip : stretches) {
    const std::size_t first = next;
    bool isMoreLost = false;
    for (const Stretch& stretch : trip) {
      const CrossingStretch& judged = all[next++];
      isMoreLost |= judged.stretch.isLost && !stretch.isLost;
      TellFate(survey.trips[judged.trip].soundings, judged.stretch);
    }
    if (!isMoreLost) continue;
    SoundingList& soundings = survey.trips[all[first].trip].soundings;
    FindLostAnew(soundings);
    for (std::size_t s = first; s < next; ++s) {
      if (all[s].isBorneOut) TellFate(soundings, all[s].stretch);
    }
  }
}

}  // namespace sondrix
