#include "survey/levels/level_fit.h"

#include "survey/levels/fit_crossings.h"
#include "survey/levels/robust_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <optional>

namespace sondrix {
namespace {

constexpr std::size_t MaxCrossings = 20'000, MaxToTry = 4'000;
constexpr double Hour = 3600;  // seconds
// Metres. Wide enough to hold nothing back, and tells what no crossing does.
constexpr double AnyLevel = 100;
constexpr double AnyCourse = 1;
// What a level may move within a trip, metres within an hour, to be chosen from: none, a lake under wind, a
// river, tides.
constexpr double Drifts[] = {0, 0.05, 0.15, 0.4};
// A course has many unknowns: it has to predict pairs of trips that were left out better by this part.
constexpr double ClearlyBetter = 0.95;
constexpr std::uint32_t Folds = 5;

// Where the unknowns of a fit stand: a constant a group, then the nodes of each trip's course.
struct CourseNodes {
  std::vector<TimeRange> times;             // of the trips
  std::vector<std::uint32_t> first, count;  // nodes; none of a trip of less than an hour
  std::uint32_t columns = 0;

  double TimeOf(std::uint32_t trip, std::uint32_t node) const {
    const TimeRange& range = times[trip];
    return range.from + (range.to - range.from) * node / (count[trip] - 1);
  }
  // The level of a trip at a time as a sum of unknowns.
  void Terms(std::uint32_t trip, std::uint32_t group, double time, double sign,
             std::vector<FitTerm>& terms) const {
    terms.push_back({group, sign});
    if (count[trip] == 0 || std::isnan(time)) return;
    const TimeRange& range = times[trip];
    const double at = std::clamp((time - range.from) / (range.to - range.from), 0.0, 1.0) * (count[trip] - 1);
    const auto before = std::min(static_cast<std::uint32_t>(at), count[trip] - 2);
    terms.push_back({first[trip] + before, sign * (1 - (at - before))});
    terms.push_back({first[trip] + before + 1, sign * (at - before)});
  }
};

std::uint32_t GroupCount(const TripGroups& groups) {
  return groups.empty() ? 0 : *std::max_element(groups.begin(), groups.end()) + 1;
}

CourseNodes NodesOf(const Survey& survey, const TripGroups& groups, bool hasCourse) {
  CourseNodes nodes;
  nodes.columns = GroupCount(groups);
  for (const Trip& trip : survey.trips) {
    const TimeRange range = TimeRangeOf(trip.soundings);
    const double hours = (range.to - range.from) / Hour;
    // Trips of weeks are tables of many: a course of some hundred nodes is all that crossings tell.
    constexpr double MaxNodes = 200;
    const bool moves = hasCourse && hours >= 1;
    nodes.times.push_back(range);
    nodes.first.push_back(nodes.columns);
    nodes.count.push_back(moves ? static_cast<std::uint32_t>(std::min(std::ceil(hours), MaxNodes)) + 1 : 0);
    nodes.columns += nodes.count.back();
  }
  return nodes;
}

// What is believed of the unknowns: constants are anything, and a course is a random walk, by drift metres
// within an hour.
FitRows BeliefsOf(const CourseNodes& nodes, std::uint32_t groups, double drift) {
  FitRows beliefs;
  for (std::uint32_t g = 0; g < groups; ++g) beliefs.Add(std::array{FitTerm{g, 1}}, 0, AnyLevel);
  for (std::uint32_t t = 0; t < nodes.first.size(); ++t) {
    for (std::uint32_t n = 0; n < nodes.count[t]; ++n) {
      const std::uint32_t column = nodes.first[t] + n;
      beliefs.Add(std::array{FitTerm{column, 1}}, 0, AnyCourse);
      if (n == 0) continue;
      const double hours = (nodes.TimeOf(t, n) - nodes.TimeOf(t, n - 1)) / Hour;
      beliefs.Add(std::array{FitTerm{column - 1, -1}, FitTerm{column, 1}}, 0, drift * std::sqrt(hours));
    }
  }
  return beliefs;
}

// keep: whether a crossing is taken, by its pair.
template <typename Keep>
FitRows RowsOf(std::span<const FitCrossing> crossings, const CourseNodes& nodes, const TripGroups& groups,
               const Keep& keep) {
  FitRows rows;
  std::vector<FitTerm> terms;
  for (const FitCrossing& crossing : crossings) {
    if (!keep(crossing.pair)) continue;
    terms.clear();
    nodes.Terms(crossing.a, groups[crossing.a], crossing.timeA, 1, terms);
    nodes.Terms(crossing.b, groups[crossing.b], crossing.timeB, -1, terms);
    rows.Add(terms, crossing.difference, crossing.error, crossing.pair);
  }
  return rows;
}

// How well pairs of trips are predicted that were left out: the mean over the pairs of the mean absolute
// misfit, weighted within a pair.
double LeftOutMisfit(std::span<const FitCrossing> crossings, const CourseNodes& nodes,
                     const TripGroups& groups, double drift) {
  const FitRows beliefs = BeliefsOf(nodes, GroupCount(groups), drift);
  std::map<std::uint32_t, std::pair<double, double>> sums;  // of a pair: misfits, weights
  for (std::uint32_t fold = 0; fold < Folds; ++fold) {
    const auto isOut = [fold](std::uint32_t pair) { return pair % Folds == fold; };
    const FitRows rest = RowsOf(crossings, nodes, groups, [&](std::uint32_t p) { return !isOut(p); });
    const FitRows out = RowsOf(crossings, nodes, groups, isOut);
    if (rest.size() == 0) continue;
    const RobustFit fit = FitRobustly(rest, beliefs, nodes.columns);
    for (std::size_t r = 0; r < out.size(); ++r) {
      auto& [misfits, weights] = sums[out.Cluster(r)];
      const double weight = 1 / (out.Error(r) * out.Error(r));
      misfits += weight * std::abs(out.Left(r, fit.unknowns));
      weights += weight;
    }
  }
  double mean = 0;
  for (const auto& [pair, sum] : sums) mean += sum.first / sum.second / static_cast<double>(sums.size());
  return mean;
}

double ChooseDrift(const Survey& survey, std::span<const Crossing> all, const TripGroups& groups) {
  const CourseNodes course = NodesOf(survey, groups, true);
  if (course.columns == GroupCount(groups)) return 0;
  const std::vector<FitCrossing> crossings = CrossingsToFit(all, MaxToTry);
  const double without = LeftOutMisfit(crossings, NodesOf(survey, groups, false), groups, 0);
  double best = 0, least = without * ClearlyBetter;
  for (const double drift : Drifts) {
    if (drift == 0) continue;
    const double misfit = LeftOutMisfit(crossings, course, groups, drift);
    if (misfit < least) {
      least = misfit;
      best = drift;
    }
  }
  return best;
}

}  // namespace

LevelFit FitConstants(const Survey& survey, std::span<const Crossing> crossings, const TripGroups& groups) {
  LevelFit fit;
  fit.levels.trips.resize(survey.trips.size());
  const std::vector<FitCrossing> chosen = CrossingsToFit(crossings, MaxCrossings);
  const std::vector<std::uint32_t> tied = TiedTrips(chosen, groups);
  const double drift = ChooseDrift(survey, crossings, groups);
  const CourseNodes nodes = NodesOf(survey, groups, drift > 0);
  const FitRows rows = RowsOf(chosen, nodes, groups, [](std::uint32_t) { return true; });
  if (rows.size() > 0) {
    const FitRows beliefs = BeliefsOf(nodes, GroupCount(groups), drift);
    const RobustFit found = FitRobustly(rows, beliefs, nodes.columns);
    std::vector<std::size_t> sizes(tied.size());
    for (const std::uint32_t root : tied) ++sizes[root];
    for (std::uint32_t t = 0; t < tied.size(); ++t) {
      Levels::TripLevel& level = fit.levels.trips[t];
      level.isKnown = sizes[tied[t]] > 1;
      if (!level.isKnown) continue;
      level.constant = found.unknowns[groups[t]];
      level.error = found.errors.empty() ? Unknown : found.errors[groups[t]];
      for (std::uint32_t n = 0; n < nodes.count[t]; ++n) {
        level.course.push_back({nodes.TimeOf(t, n), found.unknowns[nodes.first[t] + n]});
      }
    }
  }
  for (Levels::TripLevel& level : fit.levels.trips) {
    if (!level.isKnown) level.why = "crosses no other trip often enough";
  }
  SettleZero(survey, tied, fit);
  // What a course has of a constant belongs to the constant.
  for (std::uint32_t t = 0; t < tied.size(); ++t) {
    Levels::TripLevel& level = fit.levels.trips[t];
    if (level.course.empty()) continue;
    const double mean = MeanLevel(survey, fit.levels, std::array{t}) - level.constant;
    level.constant += mean;
    for (LevelReading& reading : level.course) reading.level -= mean;
  }
  if (drift > 0) {
    fit.remarks.push_back("the level moves within trips: it was found by the hour where a trip is longer");
  }
  return fit;
}

LevelFit LevelsOfGauge(const Survey& survey, LevelSeries gauge) {
  LevelFit fit;
  fit.levels.gauge = std::move(gauge);
  fit.levels.trips.resize(survey.trips.size());
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    const SoundingList& soundings = survey.trips[t].soundings;
    std::uint64_t timed = 0, inside = 0;
    for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
      for (const Sounding& sounding : soundings.Block(b)) {
        if (sounding.fate != Fate::Used || !sounding.HasTime()) continue;
        ++timed;
        inside += std::isnan(fit.levels.gauge.At(sounding.time)) ? 0 : 1;
      }
    }
    Levels::TripLevel& level = fit.levels.trips[t];
    level.isKnown = timed > 0 && inside == timed;
    level.error = Unknown;
    if (timed == 0) {
      level.why = "has no times";
    } else if (inside == 0) {
      level.why = "lies outside the readings";
    } else if (!level.isKnown) {
      level.why = "lies outside the readings with " + std::to_string(timed - inside) + " of " +
                  std::to_string(timed) + " soundings";
    }
  }
  return fit;
}

LevelFit FitGauge(const Survey& survey, LevelSeries gauge, std::span<const Crossing> crossings,
                  const TripGroups& groups) {
  LevelFit fit = LevelsOfGauge(survey, std::move(gauge));
  const std::uint32_t count = GroupCount(groups), scale = count;
  FitRows rows, beliefs;
  for (std::uint32_t g = 0; g < count; ++g) beliefs.Add(std::array{FitTerm{g, 1}}, 0, AnyLevel);
  // Nothing is known of the scale but that gauges of one water are much alike; it counts where crossings
  // tell nothing.
  constexpr double LikelyScale = 1, ScaleError = 3;
  beliefs.Add(std::array{FitTerm{scale, 1}}, LikelyScale, ScaleError);
  double least = std::numeric_limits<double>::infinity(), largest = -least;
  std::vector<FitTerm> terms;
  for (const FitCrossing& crossing : CrossingsToFit(crossings, MaxCrossings)) {
    if (!fit.levels.trips[crossing.a].isKnown || !fit.levels.trips[crossing.b].isKnown) continue;
    const double moved = fit.levels.gauge.At(crossing.timeA) - fit.levels.gauge.At(crossing.timeB);
    if (std::isnan(moved)) continue;
    terms = {{groups[crossing.a], 1}, {groups[crossing.b], -1}, {scale, moved}};
    rows.Add(terms, crossing.difference, crossing.error, crossing.pair);
    least = std::min(least, moved);
    largest = std::max(largest, moved);
  }
  // Readings that differ less than the bed between two visits tell no scale.
  constexpr double LeastRange = 0.1;
  constexpr std::size_t LeastRows = 10;
  if (rows.size() < LeastRows || largest - least < LeastRange) {
    fit.remarks.push_back(
        "too few crossings at different levels tell the scale of the gauge: it is taken as it stands");
    return fit;
  }
  const RobustFit found = FitRobustly(rows, beliefs, count + 1);
  fit.levels.gaugeScale = found.unknowns[scale];
  if (!found.errors.empty()) fit.levels.gaugeScaleError = found.errors[scale];
  std::vector<std::uint32_t> known;
  for (std::uint32_t t = 0; t < groups.size(); ++t) {
    Levels::TripLevel& level = fit.levels.trips[t];
    if (!level.isKnown) continue;
    known.push_back(t);
    level.constant = found.unknowns[groups[t]];
    if (!found.errors.empty()) level.error = found.errors[groups[t]];
  }
  // Boats differ from each other; which of them is right nothing tells, so the gauge keeps its zero by mean.
  double mean = 0;
  for (const std::uint32_t t : known)
    mean += fit.levels.trips[t].constant / static_cast<double>(known.size());
  for (const std::uint32_t t : known) fit.levels.trips[t].constant -= mean;
  return fit;
}

}  // namespace sondrix
