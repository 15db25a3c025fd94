#include "app/chart/chart_run.h"

#include <cmath>

namespace sondrix {

void TripAccount::Add(const TripAccount& other) {
  for (std::size_t i = 0; i < fates.size(); ++i) fates[i] += other.fates[i];
  times.from = std::fmin(times.from, other.times.from);
  times.to = std::fmax(times.to, other.times.to);
}

double DeepestOf(const DepthModel& model) {
  double deepest = Unknown;
  for (const float depth : model.depth) deepest = std::fmax(deepest, depth);
  return deepest;
}

TripAccount AccountOf(const SourceAccount& source, const ChartRun& run) {
  TripAccount sum;
  for (std::size_t t = 0; t < source.tripCount; ++t) sum.Add(run.trips[source.firstTrip + t]);
  return sum;
}

}  // namespace sondrix
