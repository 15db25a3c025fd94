#include "survey/levels/fit_crossings.h"
#include "survey/levels/level_fit.h"
#include "survey/levels/robust_fit.h"
#include "survey/levels/tide_choice.h"
#include "survey/levels/tide_columns.h"
#include "survey/levels/tide_constituents.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

namespace sondrix {
namespace {

constexpr std::size_t MaxCrossings = 20'000;
constexpr double Day = 86'400;  // seconds
// What is believed before the first fit, metres.
constexpr TideBelief FirstBelief = {0.3, 1, 0.1};

std::vector<FitCrossing> TimedCrossings(std::span<const Crossing> crossings) {
  std::vector<FitCrossing> chosen = CrossingsToFit(crossings, MaxCrossings);
  std::erase_if(chosen, [](const FitCrossing& crossing) {
    return std::isnan(crossing.timeA) || std::isnan(crossing.timeB);
  });
  return chosen;
}

// Seconds from the first to the last.
double SpanOf(std::span<const FitCrossing> crossings) {
  double from = crossings[0].timeA, to = from;
  for (const FitCrossing& crossing : crossings) {
    from = std::min({from, crossing.timeA, crossing.timeB});
    to = std::max({to, crossing.timeA, crossing.timeB});
  }
  return to - from;
}

Constituent ConstituentOf(const TideSpeed& speed, const RobustFit& found, std::size_t column) {
  const double cosine = found.unknowns[column], sine = found.unknowns[column + 1];
  const double phase = std::atan2(sine, cosine) / std::numbers::pi * 180;
  double error = Unknown;
  if (!found.errors.empty())
    error = std::hypot(found.errors[column], found.errors[column + 1]) / std::sqrt(2);
  return {std::string(speed.name), speed.speed, std::hypot(cosine, sine), phase < 0 ? phase + 360 : phase,
          error};
}

std::string NamesOf(std::span<const TideSpeed> speeds) {
  std::string names;
  for (const TideSpeed& speed : speeds) names += (names.empty() ? "" : ", ") + std::string(speed.name);
  return names;
}

std::string WordsOfSpan(double span) {
  const double days = span / Day;
  return days < 3 ? std::to_string(std::lround(days * 24)) + " hours"
                  : std::to_string(std::lround(days)) + " days";
}

void TellWhoHasNone(const Survey& survey, LevelFit& fit) {
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    Levels::TripLevel& level = fit.levels.trips[t];
    level.isKnown = !std::isnan(TimeRangeOf(survey.trips[t].soundings).from);
    level.error = Unknown;
    if (!level.isKnown) level.why = "has no times";
  }
}

// Without a tide the trips keep their depths.
LevelFit NoTide(LevelFit fit, std::string why) {
  for (Levels::TripLevel& level : fit.levels.trips) {
    if (level.isKnown) level.why = "no tide is known";
    level.isKnown = false;
  }
  fit.remarks.push_back(std::move(why));
  return fit;
}

}  // namespace

LevelFit FitTide(const Survey& survey, std::span<const Crossing> crossings, const TripGroups& groups) {
  LevelFit fit;
  fit.levels.trips.resize(survey.trips.size());
  TellWhoHasNone(survey, fit);
  const std::vector<FitCrossing> chosen = TimedCrossings(crossings);
  if (chosen.empty()) return NoTide(std::move(fit), "no trips with times cross: no tide can be told");
  const double span = SpanOf(chosen);
  std::vector<TideSpeed> speeds = SpeedsToldApart(span);
  if (speeds.empty()) {
    return NoTide(std::move(fit),
                  "all trips that cross lie within " + WordsOfSpan(span) + ": too short for a tide");
  }
  std::vector<TideSpeed> untold;
  for (const TideSpeed& speed : TideSpeeds()) {
    const bool isTold = std::any_of(speeds.begin(), speeds.end(),
                                    [&](const TideSpeed& other) { return other.name == speed.name; });
    if (!isTold) untold.push_back(speed);
  }
  if (!untold.empty()) {
    fit.remarks.push_back("left out, since " + WordsOfSpan(span) +
                          " don't tell them apart: " + NamesOf(untold));
    untold.clear();
  }

  TideColumns columns(speeds, groups, chosen);
  const FitRows rows = columns.Rows(chosen);
  RobustFit found = FitRobustly(rows, columns.Beliefs(FirstBelief), columns.Count());
  const TideChoice choice = ChooseTideBelief(columns, chosen, rows, found.weights);
  if (!choice.isBetterThanNone) {
    return NoTide(std::move(fit),
                  "no tide is to be seen: trips that were left out are not predicted better with one");
  }
  // One by one, since what one leaves may tell another.
  for (;;) {
    found = FitRobustly(columns.Rows(chosen), columns.Beliefs(choice.belief), columns.Count());
    const std::vector<double> parts = columns.UncertainParts(chosen, found.weights, choice.belief);
    const auto worst = std::max_element(parts.begin(), parts.end());
    if (parts.size() <= 1 || *worst <= MostUncertain) break;
    const auto index = static_cast<std::size_t>(worst - parts.begin());
    untold.push_back(speeds[index]);
    speeds.erase(speeds.begin() + static_cast<std::ptrdiff_t>(index));
    columns = TideColumns(speeds, groups, chosen);
  }
  if (!untold.empty()) {
    fit.remarks.push_back("left out, since these trips tell too little of them: " + NamesOf(untold));
  }
  for (std::size_t s = 0; s < speeds.size(); ++s) {
    fit.levels.tide.push_back(ConstituentOf(speeds[s], found, TideColumns::ColumnOf(s)));
  }
  for (std::uint32_t t = 0; t < groups.size(); ++t) {
    if (fit.levels.trips[t].isKnown)
      fit.levels.trips[t].constant = columns.ConstantOf(groups[t], found.unknowns);
  }
  SettleZero(survey, TiedTrips(chosen, groups), fit);
  return fit;
}

}  // namespace sondrix
