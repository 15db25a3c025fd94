#include "survey/far_places.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace sondrix {
namespace {

// A stay at a place, a sounding after the other.
struct Stay {
  double longitude, latitude;
  int soundings;
  Fate fate = Fate::Used;
};

Survey SurveyOf(const std::vector<std::vector<Stay>>& trips) {
  Survey survey;
  for (const std::vector<Stay>& stays : trips) {
    Trip trip;
    for (const Stay& stay : stays) {
      for (int i = 0; i < stay.soundings; ++i) {
        Sounding sounding;
        sounding.longitude = stay.longitude + 1e-5 * i;
        sounding.latitude = stay.latitude;
        sounding.fate = stay.fate;
        trip.soundings.Add(sounding);
      }
    }
    survey.trips.push_back(std::move(trip));
  }
  return survey;
}

TEST(FarPlaces, WhatLiesByItself) {
  const struct {
    std::vector<std::vector<Stay>> trips;
    std::string far;  // trip, soundings, "all" of it, tens of kilometres
  } cases[] = {
      {{}, ""},
      {{{}, {{37, 55, 1}}}, ""},
      // A trip 500 km to the east, one fix to the north of another trip.
      {{{{37, 55, 90}}, {{44.83, 55, 30}}, {{37.1, 55, 90}, {37, 56, 1}, {37, 55, 9}}},
       "1: 30 all 50; 2: 1 12"},
      // Trips near each other, a chain of them, and one that is used nowhere.
      {{{{37, 55, 90}}, {{37.15, 55, 1}}}, ""},
      {{{{37, 55, 90}}, {{37.2, 55, 1}}, {{37.4, 55, 1}}, {{37.6, 55, 1}}}, ""},
      {{{{37, 55, 90}}, {{1, 1, 9, Fate::NoPosition}}}, ""},
      // Two waters of which neither is the other's mistake.
      {{{{37, 55, 90}}, {{39, 55, 46}}}, ""},
      {{{{37, 55, 90}}, {{39, 55, 45}}}, "1: 45 all 13"},
      {{{{37, 55, 1}}, {{39, 55, 1}}}, ""},
      // Across 180 degrees, and around a pole.
      {{{{179.99, 10, 9}}, {{-179.99, 10, 2}}}, ""},
      {{{{0, 89.99, 9}}, {{90, 89.95, 2}}, {{180, 89.95, 2}}}, ""},
      {{{{0, -89.99, 9}}, {{90, -87.95, 2}}}, "1: 2 all 23"},
  };
  for (const auto& [trips, expected] : cases) {
    const Survey survey = SurveyOf(trips);
    const FarPlaces far(survey);
    std::string text;
    for (const FarSoundings& one : far.Trips()) {
      text += (text.empty() ? "" : "; ") + std::to_string(one.trip) + ": " + std::to_string(one.count) +
              (one.isAll ? " all " : " ") + std::to_string(std::lround(one.distance / 1e4));
    }
    EXPECT_EQ(text, expected);
    std::uint64_t held = 0, told = 0;
    for (const Trip& trip : survey.trips) {
      for (std::size_t i = 0; i < trip.soundings.size(); ++i)
        held += trip.soundings[i].fate == Fate::Used && far.Hold(trip.soundings[i]) ? 1 : 0;
    }
    for (const FarSoundings& one : far.Trips()) told += one.count;
    EXPECT_EQ(held, told);
  }
}

}  // namespace
}  // namespace sondrix
