#include "survey/levels/crossings.h"

#include "core/files.h"
#include "core/parallel.h"
#include "geo/near_places.h"
#include "survey/levels/crossing_side.h"
#include "survey/levels/track_passes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

namespace sondrix {
namespace {

constexpr std::size_t Chunk = 1 << 14;         // passes that a thread takes at a time
constexpr std::size_t MaxCrossings = 1 << 20;  // thinned evenly beyond that
// Of the passes about one, so many are looked at: enough for a dozen boats there, and few enough for a
// landing.
constexpr std::size_t MaxAbout = 48;
constexpr std::uint32_t MaxPlaces = 6;  // of a pass
constexpr double OtherTimeWay = 30;     // metres

// Two passes by their index, and where they are nearest.
struct PassPair {
  std::uint32_t a = 0, b = 0;
  std::uint32_t atA = 0, atB = 0;
};

class CrossingFinder {
 public:
  CrossingFinder(const Survey& survey, const CrossingSearch& search, std::span<const TrackPass> passes)
      : survey_(&survey), search_(&search), passes_(passes) {}

  // The pairs of a pass with those about it: with each trip where it is nearest.
  void PairsOf(std::uint32_t index, std::vector<PassPair>& pairs) {
    CollectAbout(index);
    nearest_.clear();
    // about_ lies by trip, so the nearest of each trip is found on the way.
    for (const std::uint32_t other : about_) {
      const auto found = Nearest(index, other);
      if (!found) continue;
      const std::uint32_t trip = passes_[other].trip;
      if (nearest_.empty() || passes_[nearest_.back().pair.b].trip != trip) {
        nearest_.push_back(*found);
      } else if (found->metres < nearest_.back().metres) {
        nearest_.back() = *found;
      }
    }
    for (const Near& near : nearest_) pairs.push_back(near.pair);
  }

 private:
  struct Near {
    PassPair pair;
    double metres = 0;
  };

  const Sounding& At(std::uint32_t trip, std::uint32_t i) const { return survey_->trips[trip].soundings[i]; }

  // The passes in a cell and its eight neighbours but the pass itself, by trip; some of them where there are
  // too many.
  void CollectAbout(std::uint32_t index) {
    about_.clear();
    const TrackPass& pass = passes_[index];
    for (int north = -1; north <= 1; ++north) {
      const std::uint64_t from = CellRows::Moved(pass.cell, -1, north);
      const std::uint64_t to = CellRows::Moved(pass.cell, 1, north);
      auto at = std::lower_bound(passes_.begin(), passes_.end(), std::min(from, to),
                                 [](const TrackPass& p, std::uint64_t cell) { return p.cell < cell; });
      for (; at != passes_.end() && at->cell <= std::max(from, to); ++at) {
        const auto other = static_cast<std::uint32_t>(at - passes_.begin());
        if (other != index) about_.push_back(other);
      }
    }
    std::sort(about_.begin(), about_.end(), [this](std::uint32_t a, std::uint32_t b) {
      return passes_[a].trip != passes_[b].trip ? passes_[a].trip < passes_[b].trip : a < b;
    });
    if (about_.size() <= MaxAbout) return;
    for (std::size_t i = 0; i < MaxAbout; ++i) about_[i] = about_[i * about_.size() / MaxAbout];
    about_.resize(MaxAbout);
  }

  bool IsOtherTime(const TrackPass& a, const TrackPass& b) const {
    if (a.trip != b.trip) return true;
    const TrackPass &earlier = a.first < b.first ? a : b, &later = a.first < b.first ? b : a;
    if (earlier.last >= later.first) return false;
    const Sounding &end = At(a.trip, earlier.last), &begin = At(a.trip, later.first);
    if (end.HasTime() && begin.HasTime()) return begin.time - end.time > search_->otherTime;
    // Without times the way between them tells; it needn't be measured further than it has to be.
    double way = 0;
    const Sounding* before = &end;
    for (std::uint32_t i = earlier.last + 1; i <= later.first && way < OtherTimeWay; ++i) {
      const Sounding& sounding = At(a.trip, i);
      if (sounding.fate != Fate::Used) continue;
      way += MetresBetween(before->longitude, before->latitude, sounding.longitude, sounding.latitude);
      before = &sounding;
    }
    return way >= OtherTimeWay;
  }

  // Where two passes are nearest to each other, if that is near enough.
  std::optional<Near> Nearest(std::uint32_t a, std::uint32_t b) const {
    const TrackPass &one = passes_[a], &other = passes_[b];
    if (!IsOtherTime(one, other)) return std::nullopt;
    Near near = {{a, b, 0, 0}, std::numeric_limits<double>::infinity()};
    const Places places = PlacesOf(one), others = PlacesOf(other);
    for (std::uint32_t i = 0; i < places.count; ++i) {
      for (std::uint32_t j = 0; j < others.count; ++j) {
        const Sounding &p = At(one.trip, places.at[i]), &q = At(other.trip, others.at[j]);
        const double metres = MetresBetween(p.longitude, p.latitude, q.longitude, q.latitude);
        if (metres < near.metres) near = {{a, b, places.at[i], others.at[j]}, metres};
      }
    }
    if (near.metres > search_->within) return std::nullopt;
    return near;
  }

  struct Places {
    std::array<std::uint32_t, MaxPlaces> at{};
    std::uint32_t count = 0;
  };
  // Used soundings of a pass, evenly chosen.
  Places PlacesOf(const TrackPass& pass) const {
    Places places;
    const std::uint32_t count = pass.last - pass.first + 1, taken = std::min(count, MaxPlaces);
    for (std::uint32_t i = 0; i < taken; ++i) {
      const std::uint32_t at = taken == 1 ? pass.first : pass.first + (count - 1) * i / (taken - 1);
      if (At(pass.trip, at).fate == Fate::Used) places.at[places.count++] = at;
    }
    return places;
  }

  const Survey* survey_;
  const CrossingSearch* search_;
  std::span<const TrackPass> passes_;
  std::vector<std::uint32_t> about_;
  std::vector<Near> nearest_;
};

// Some longitude of the survey.
double ReferenceOf(const Survey& survey) {
  for (const Trip& trip : survey.trips) {
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
      if (trip.soundings[i].fate == Fate::Used) return trip.soundings[i].longitude;
    }
  }
  return 0;
}

std::vector<PassPair> PairsOf(const Survey& survey, const CrossingSearch& search,
                              std::span<const TrackPass> passes) {
  const std::size_t chunks = (passes.size() + Chunk - 1) / Chunk;
  std::vector<std::vector<PassPair>> found(chunks);
  InParallel(chunks, search.threads, [&] {
    return [&, finder = CrossingFinder(survey, search, passes)](std::size_t chunk) mutable {
      if (search.isToEnd && search.isToEnd()) throw EndAsked();
      const std::size_t end = std::min(passes.size(), (chunk + 1) * Chunk);
      for (std::size_t i = chunk * Chunk; i < end; ++i) {
        finder.PairsOf(static_cast<std::uint32_t>(i), found[chunk]);
      }
    };
  });
  std::vector<PassPair> pairs;
  for (std::vector<PassPair>& some : found) {
    pairs.insert(pairs.end(), some.begin(), some.end());
    some = {};
  }
  // Most pairs were found from both sides.
  for (PassPair& pair : pairs) {
    if (pair.a > pair.b) pair = {pair.b, pair.a, pair.atB, pair.atA};
  }
  const auto key = [](const PassPair& pair) { return std::tie(pair.a, pair.b, pair.atA, pair.atB); };
  std::sort(pairs.begin(), pairs.end(),
            [&](const PassPair& p, const PassPair& q) { return key(p) < key(q); });
  const auto isSame = [](const PassPair& p, const PassPair& q) { return p.a == q.a && p.b == q.b; };
  pairs.erase(std::unique(pairs.begin(), pairs.end(), isSame), pairs.end());
  if (pairs.size() > MaxCrossings) {
    for (std::size_t i = 0; i < MaxCrossings; ++i) pairs[i] = pairs[i * pairs.size() / MaxCrossings];
    pairs.resize(MaxCrossings);
  }
  return pairs;
}

// a and b in the order that is promised.
Crossing Ordered(Crossing crossing) {
  const bool isSwapped =
      crossing.a.trip != crossing.b.trip ? crossing.a.trip > crossing.b.trip : crossing.a.at > crossing.b.at;
  if (isSwapped) std::swap(crossing.a, crossing.b);
  return crossing;
}

}  // namespace

std::vector<Crossing> FindCrossings(const Survey& survey, const CrossingSearch& search) {
  const std::vector<TrackPass> passes =
      TrackPasses(survey, CellRows(search.within), ReferenceOf(survey), search.threads, search.isToEnd);
  const std::vector<PassPair> pairs = PairsOf(survey, search, passes);
  std::vector<Crossing> crossings(pairs.size());
  const std::size_t chunks = (pairs.size() + Chunk - 1) / Chunk;
  InParallel(chunks, search.threads, [&] {
    return [&](std::size_t chunk) {
      if (search.isToEnd && search.isToEnd()) throw EndAsked();
      const std::size_t end = std::min(pairs.size(), (chunk + 1) * Chunk);
      for (std::size_t i = chunk * Chunk; i < end; ++i) {
        const PassPair& pair = pairs[i];
        crossings[i] =
            Ordered(CrossingOf(survey, {passes[pair.a].trip, pair.atA}, {passes[pair.b].trip, pair.atB}));
      }
    };
  });
  return crossings;
}

}  // namespace sondrix
