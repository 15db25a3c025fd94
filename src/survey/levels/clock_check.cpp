#include "survey/levels/fit_crossings.h"
#include "survey/levels/level_fit.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace sondrix {
namespace {

constexpr std::size_t MaxCrossings = 20'000;
constexpr std::size_t LeastCrossings = 10, LeastOthers = 2;
constexpr int MostHours = 3;
// A level is known to some centimetres, and a tide moves by them within an hour: what betters the misfit by
// less than this, or leaves more than this part of it, is no clock.
constexpr double LeastBetter = 0.15;  // metres
constexpr double MostLeft = 0.5;

double MedianMisfit(std::span<const FitCrossing> crossings, std::uint32_t trip, double seconds,
                    const Levels& levels) {
  std::vector<double> misfits;
  for (const FitCrossing& crossing : crossings) {
    const double a = levels.Above(crossing.a, crossing.timeA + (crossing.a == trip ? seconds : 0));
    const double b = levels.Above(crossing.b, crossing.timeB + (crossing.b == trip ? seconds : 0));
    if (!std::isnan(a) && !std::isnan(b)) misfits.push_back(std::abs(crossing.difference - (a - b)));
  }
  if (misfits.size() < LeastCrossings) return Unknown;
  const auto middle = misfits.begin() + static_cast<std::ptrdiff_t>(misfits.size() / 2);
  std::nth_element(misfits.begin(), middle, misfits.end());
  return *middle;
}

}  // namespace

std::vector<ClockSuspicion> SuspectClocks(const Survey& survey, std::span<const Crossing> crossings,
                                          const Levels& levels) {
  std::vector<ClockSuspicion> suspicions;
  if (levels.tide.empty() && levels.gauge.Readings().empty()) return suspicions;
  std::map<std::uint32_t, std::vector<FitCrossing>> ofTrip;
  std::map<std::uint32_t, std::map<std::uint32_t, int>> others;
  for (const FitCrossing& crossing : CrossingsToFit(crossings, MaxCrossings)) {
    if (crossing.a == crossing.b) continue;
    ofTrip[crossing.a].push_back(crossing);
    ofTrip[crossing.b].push_back(crossing);
    ++others[crossing.a][crossing.b];
    ++others[crossing.b][crossing.a];
  }
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    if (others[t].size() < LeastOthers) continue;
    const double asItStands = MedianMisfit(ofTrip[t], t, 0, levels);
    ClockSuspicion best = {t, 0, 0};
    for (int hours = -MostHours; hours <= MostHours; ++hours) {
      const double better = asItStands - MedianMisfit(ofTrip[t], t, hours * 3600.0, levels);
      if (better > best.better) best = {t, hours, better};
    }
    if (best.better >= LeastBetter && asItStands - best.better <= MostLeft * asItStands) {
      suspicions.push_back(best);
    }
  }
  return suspicions;
}

}  // namespace sondrix
