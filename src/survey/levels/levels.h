#pragma once

#include "survey/levels/level_series.h"
#include "survey/survey.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

inline constexpr double TideEpoch = 946684800;  // 2000-01-01 00:00 UTC, seconds since 1970

// A part of a tide. Its height is amplitude * cos(speed * (time - TideEpoch) - phase).
struct Constituent {
  std::string name;      // "M2"
  double speed = 0;      // degrees an hour
  double amplitude = 0;  // metres
  double phase = 0;      // degrees, 0 to 360
  double error = 0;      // standard error of the amplitude, metres
};

// Where the water stood for each trip over time.
struct Levels {
  struct TripLevel {
    double constant = 0;   // metres
    double error = 0;      // standard error, metres; not a number where nothing tells it
    bool isKnown = false;  // else the trip stays as it was
    std::string why;       // it isn't: "never crosses another trip", "lies outside the readings"
    // How the level moved about the constant: linear between, and level before and behind. Empty: it didn't.
    std::vector<LevelReading> course;
  };
  std::vector<TripLevel> trips;  // of the survey
  std::vector<Constituent> tide;
  LevelSeries gauge;
  double gaugeScale = 1;
  double gaugeScaleError = Unknown;  // standard error; not a number where the scale was given
  double zero = 0;                   // metres, of the chart

  // Metres above the zero at a time: constant, course, tide and gauge together, less the zero. Not a number
  // where the trip's isn't known.
  double Above(std::uint32_t trip, double time) const;
};

// Metres, of the tide alone.
double TideAt(std::span<const Constituent> tide, double time);

// What a level's course tells at a time; 0 where it is empty or the time isn't known.
double CourseAt(std::span<const LevelReading> course, double time);

// The mean of the level above the zero over the used soundings of the trips given (by index) that have one;
// 0 where there are none.
double MeanLevel(const Survey& survey, const Levels& levels, std::span<const std::uint32_t> trips);

// Takes the level from each depth above 0 of a trip that has one; what was recorded stays. Of a sounding
// without a time in a trip that has times the level is that of the soundings beside it. Returns how many
// depths get below 0: places that are dry at the zero, kept as they are.
std::uint64_t ApplyLevels(Survey& survey, const Levels& levels);

}  // namespace sondrix
