#include "survey/levels/tide_choice.h"

#include "survey/levels/normal_matrix.h"

#include <Eigen/Cholesky>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <vector>

namespace sondrix {
namespace {

constexpr std::size_t Folds = 20;
constexpr double NoTide = 1e-6;  // metres
// Of beliefs that predict alike within this, which a few trips can't tell apart, the most careful one holds.
constexpr double AsGood = 1.015;
// M2 of the world's coasts is some centimetres to five metres.
constexpr double Sizes[] = {0.05, 0.1, 0.2, 0.4, 0.8, 1.6, 3.2};
constexpr double Dailies[] = {0.25, 0.5, 2, 4};
// Wind and air pressure move the water by 5 cm at least from trip to trip: with less the fit would take many
// crossings of one trip for many witnesses.
constexpr double Weathers[] = {0.05, 0.1, 0.2};

// A set of trips that is left out: the rest's equations but for beliefs, and the crossings that lead from one
// to the other.
struct Fold {
  NormalMatrix rest;
  std::vector<std::size_t> rows;
  std::vector<std::uint32_t> trips;  // of the rows: the one that is left out
};

std::vector<Fold> FoldsOf(const TideColumns& columns, std::span<const FitCrossing> crossings,
                          const FitRows& rows, std::span<const double> weights) {
  std::map<std::uint32_t, std::size_t> foldOf;  // of each trip that crosses
  for (const FitCrossing& crossing : crossings) {
    foldOf[crossing.a] = 0;
    foldOf[crossing.b] = 0;
  }
  const std::size_t count = std::min(foldOf.size(), Folds);
  std::size_t next = 0;
  for (auto& [trip, fold] : foldOf) fold = next++ % count;

  NormalMatrix all(columns.Count());
  std::vector<Fold> folds(count, {NormalMatrix(columns.Count()), {}, {}});  // first what each takes away
  for (std::size_t r = 0; r < rows.size(); ++r) {
    all.Add(rows, r, weights[r]);
    const std::size_t a = foldOf[crossings[r].a], b = foldOf[crossings[r].b];
    folds[a].rest.Add(rows, r, weights[r]);
    if (a == b) continue;
    folds[b].rest.Add(rows, r, weights[r]);
    folds[a].rows.push_back(r);
    folds[a].trips.push_back(crossings[r].a);
    folds[b].rows.push_back(r);
    folds[b].trips.push_back(crossings[r].b);
  }
  for (Fold& fold : folds) {
    NormalMatrix rest = all;
    rest -= fold.rest;
    fold.rest = std::move(rest);
  }
  return folds;
}

// The mean over the trips of their mean absolute misfit, weighted within a trip.
double LeftOutMisfit(const TideColumns& columns, const std::vector<Fold>& folds, const FitRows& rows,
                     const TideBelief& belief) {
  const FitRows beliefs = columns.Beliefs(belief);
  std::map<std::uint32_t, std::pair<double, double>> sums;  // of a trip: misfits, weights
  for (const Fold& fold : folds) {
    NormalMatrix normal = fold.rest;
    normal.Add(beliefs);
    const Eigen::VectorXd unknowns = Eigen::LLT<Eigen::MatrixXd>(normal.Whole()).solve(normal.Right());
    for (std::size_t i = 0; i < fold.rows.size(); ++i) {
      const std::size_t r = fold.rows[i];
      double left = rows.Value(r);
      for (const FitTerm& term : rows.Terms(r)) {
        if (columns.IsForAll(term.column))
          left -= term.factor * unknowns[static_cast<Eigen::Index>(term.column)];
      }
      auto& [misfits, weights] = sums[fold.trips[i]];
      const double weight = 1 / (rows.Error(r) * rows.Error(r));
      misfits += weight * std::abs(left);
      weights += weight;
    }
  }
  double mean = 0;
  for (const auto& [trip, sum] : sums) mean += sum.first / sum.second / static_cast<double>(sums.size());
  return mean;
}

}  // namespace

TideChoice ChooseTideBelief(const TideColumns& columns, std::span<const FitCrossing> crossings,
                            const FitRows& rows, std::span<const double> weights) {
  const std::vector<Fold> folds = FoldsOf(columns, crossings, rows, weights);
  const auto misfitOf = [&](const TideBelief& belief) { return LeftOutMisfit(columns, folds, rows, belief); };
  const double without = misfitOf({NoTide, 1, Weathers[0]});
  TideChoice best = {{}, without, false};
  const auto tryIt = [&](const TideBelief& belief, double least) {
    const double misfit = misfitOf(belief);
    if (misfit < least) best = {belief, misfit, true};
  };
  for (const double weather : Weathers) {
    for (const double size : Sizes) tryIt({size, 1, weather}, best.leftOutMisfit);
  }
  if (!best.isBetterThanNone) return best;
  const TideChoice even = best;
  for (const double size : Sizes) {
    if (size >= even.belief.size) break;
    const TideBelief careful = {size, 1, even.belief.weather};
    if (misfitOf(careful) > AsGood * even.leftOutMisfit) continue;
    best.belief = careful;
    break;
  }
  const double size = best.belief.size;
  for (const double daily : Dailies) {
    tryIt({size, daily, even.belief.weather}, std::min(best.leftOutMisfit, even.leftOutMisfit / AsGood));
  }
  return best;
}

}  // namespace sondrix
