#pragma once

#include "survey/levels/crossings.h"
#include "survey/levels/levels.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

// Which trips share a level (of one boat, or of one day): a number for each trip of the survey.
using TripGroups = std::vector<std::uint32_t>;

// What a fit found, and what a user should know of it.
struct LevelFit {
  Levels levels;  // their zero is 0
  std::vector<std::string> remarks;
};

// A constant level for each group, by the robust least squares of the crossings' differences. Weighted by
// their used soundings the levels of trips that are tied to each other by crossings sum to zero.
LevelFit FitConstants(const Survey& survey, std::span<const Crossing> crossings, const TripGroups& groups);

// A tide that is the same for all trips, beside a constant a group (all trips one group: none).
LevelFit FitTide(const Survey& survey, std::span<const Crossing> crossings, const TripGroups& groups);

// A gauge's readings as they stand: trips that they don't cover whole stay as they were.
LevelFit LevelsOfGauge(const Survey& survey, LevelSeries gauge);

// The same with the scale and a constant a group that fit the crossings best, for a gauge at another place.
LevelFit FitGauge(const Survey& survey, LevelSeries gauge, std::span<const Crossing> crossings,
                  const TripGroups& groups);

// Trips whose time seems to be set wrong: with it moved by so many hours, the levels given fit the crossings
// better by so many metres (median).
struct ClockSuspicion {
  std::uint32_t trip = 0;
  int hours = 0;
  double better = 0;
};
std::vector<ClockSuspicion> SuspectClocks(const Survey& survey, std::span<const Crossing> crossings,
                                          const Levels& levels);

}  // namespace sondrix
