#include "core/parallel.h"
#include "geo/near_places.h"
#include "survey/levels/crossing_side.h"
#include "survey/levels/crossings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

namespace sondrix {
namespace {

constexpr double WorstApart = 25;  // metres between two of one pair of trips

double MedianOf(std::vector<double> values) {
  if (values.empty()) return Unknown;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) return *middle;
  return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

Misfit MisfitOfDifferences(std::vector<double> differences) {
  Misfit misfit;
  misfit.count = differences.size();
  double squares = 0;
  for (double& difference : differences) {
    squares += difference * difference;
    difference = std::abs(difference);
  }
  if (misfit.count > 0) misfit.rootMeanSquare = std::sqrt(squares / static_cast<double>(misfit.count));
  misfit.median = MedianOf(std::move(differences));
  return misfit;
}

}  // namespace

void RenewDepths(const Survey& survey, std::span<Crossing> crossings) {
  for (Crossing& crossing : crossings) {
    const Crossing renewed =
        CrossingOf(survey, {crossing.a.trip, crossing.a.at}, {crossing.b.trip, crossing.b.at});
    crossing.a.depth = renewed.a.depth;
    crossing.b.depth = renewed.b.depth;
  }
}

Misfit MisfitOf(std::span<const Crossing> crossings) {
  std::vector<double> differences;
  differences.reserve(crossings.size());
  for (const Crossing& crossing : crossings)
    differences.push_back(static_cast<double>(crossing.Difference()));
  return MisfitOfDifferences(std::move(differences));
}

std::vector<PairMisfit> PairMisfits(std::span<const Crossing> crossings) {
  std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<double>> pairs;
  for (const Crossing& crossing : crossings) {
    pairs[{crossing.a.trip, crossing.b.trip}].push_back(static_cast<double>(crossing.Difference()));
  }
  std::vector<PairMisfit> misfits;
  for (const auto& [trips, differences] : pairs) {
    misfits.push_back({trips.first, trips.second, MisfitOfDifferences(differences), MedianOf(differences)});
  }
  return misfits;
}

std::vector<Crossing> WorstCrossings(std::span<const Crossing> crossings, std::size_t count) {
  std::vector<std::uint32_t> order(crossings.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::uint32_t i, std::uint32_t j) {
    return std::abs(crossings[i].Difference()) > std::abs(crossings[j].Difference());
  });
  std::vector<Crossing> worst;
  for (const std::uint32_t i : order) {
    if (worst.size() == count) break;
    const Crossing& crossing = crossings[i];
    const bool isTold = std::any_of(worst.begin(), worst.end(), [&](const Crossing& other) {
      return other.a.trip == crossing.a.trip && other.b.trip == crossing.b.trip &&
             MetresBetween(other.longitude, other.latitude, crossing.longitude, crossing.latitude) <
                 WorstApart;
    });
    if (!isTold) worst.push_back(crossing);
  }
  return worst;
}

}  // namespace sondrix
