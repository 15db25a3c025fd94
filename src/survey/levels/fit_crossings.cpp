#include "survey/levels/fit_crossings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

namespace sondrix {
namespace {

// Metres by which a bed differs from visit to visit: weed, mud, the pitch of a boat.
constexpr double BedError = 0.05;
// Metres by which each fix may be off, so that passes at one place are that far apart all the same.
constexpr double FixError = 2;
constexpr std::size_t LeastOfPair = 10;
constexpr std::size_t LeastToTie = 3;  // fewer crossings may be one fault of the sounder

double ErrorOf(const Crossing& crossing) {
  const double bySlope = static_cast<double>(crossing.slope) * std::hypot(crossing.apart, FixError);
  return std::hypot(static_cast<double>(crossing.noise), bySlope, BedError);
}

std::uint32_t RootOf(std::vector<std::uint32_t>& parents, std::uint32_t trip) {
  while (parents[trip] != trip) trip = parents[trip] = parents[parents[trip]];
  return trip;
}

void Join(std::vector<std::uint32_t>& parents, std::uint32_t a, std::uint32_t b) {
  a = RootOf(parents, a);
  b = RootOf(parents, b);
  parents[std::max(a, b)] = std::min(a, b);
}

}  // namespace

std::vector<FitCrossing> CrossingsToFit(std::span<const Crossing> crossings, std::size_t atMost) {
  std::vector<std::uint32_t> order(crossings.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::uint32_t i, std::uint32_t j) {
    return std::tie(crossings[i].a.trip, crossings[i].b.trip) <
           std::tie(crossings[j].a.trip, crossings[j].b.trip);
  });
  const auto isSamePair = [&](std::uint32_t i, std::uint32_t j) {
    return crossings[i].a.trip == crossings[j].a.trip && crossings[i].b.trip == crossings[j].b.trip;
  };
  std::size_t pairs = 0;
  for (std::size_t i = 0; i < order.size(); ++i) pairs += i == 0 || !isSamePair(order[i - 1], order[i]);
  const std::size_t ofPair = std::max(LeastOfPair, pairs > 0 ? atMost / pairs : 0);
  std::vector<FitCrossing> chosen;
  std::uint32_t pair = 0;
  for (std::size_t first = 0; first < order.size(); ++pair) {
    std::size_t end = first + 1;
    while (end < order.size() && isSamePair(order[first], order[end])) ++end;
    const std::size_t count = end - first, taken = std::min(count, ofPair);
    for (std::size_t i = 0; i < taken; ++i) {
      const Crossing& crossing = crossings[order[first + i * count / taken]];
      chosen.push_back({crossing.a.trip, crossing.b.trip, crossing.a.time, crossing.b.time,
                        static_cast<double>(crossing.a.depth) - static_cast<double>(crossing.b.depth),
                        ErrorOf(crossing), pair});
    }
    first = end;
  }
  return chosen;
}

std::vector<std::uint32_t> TiedTrips(std::span<const FitCrossing> crossings, const TripGroups& groups) {
  std::vector<std::uint32_t> parents(groups.size());
  std::iota(parents.begin(), parents.end(), 0U);
  // Trips of one group share a level, so they are tied without a crossing once one of them is.
  std::map<std::uint32_t, std::uint32_t> first;
  for (std::uint32_t t = 0; t < groups.size(); ++t) {
    const auto [found, isNew] = first.emplace(groups[t], t);
    if (!isNew) Join(parents, found->second, t);
  }
  // A trip may touch several others once each: what counts is all that lies between two sets.
  for (bool hasJoined = true; hasJoined;) {
    hasJoined = false;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> between;
    for (const FitCrossing& crossing : crossings) {
      const auto a = RootOf(parents, crossing.a), b = RootOf(parents, crossing.b);
      if (a != b) ++between[{std::min(a, b), std::max(a, b)}];
    }
    for (const auto& [sets, count] : between) {
      if (count < LeastToTie) continue;
      Join(parents, sets.first, sets.second);
      hasJoined = true;
    }
  }
  for (std::uint32_t t = 0; t < parents.size(); ++t) parents[t] = RootOf(parents, t);
  return parents;
}

void SettleZero(const Survey& survey, std::span<const std::uint32_t> tied, LevelFit& fit) {
  std::map<std::uint32_t, std::vector<std::uint32_t>> sets;
  for (std::uint32_t t = 0; t < tied.size(); ++t) sets[tied[t]].push_back(t);
  std::size_t known = 0;
  for (const auto& [root, trips] : sets) {
    const double mean = MeanLevel(survey, fit.levels, trips);
    bool isKnown = false;
    for (const std::uint32_t t : trips) {
      if (!fit.levels.trips[t].isKnown) continue;
      fit.levels.trips[t].constant -= mean;
      isKnown = true;
    }
    known += isKnown ? 1 : 0;
  }
  if (known > 1) {
    fit.remarks.push_back("the trips fall into " + std::to_string(known) +
                          " sets that don't cross each other: the level between the sets is not known");
  }
}

}  // namespace sondrix
