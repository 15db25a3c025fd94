#pragma once

#include "survey/survey.h"

#include <initializer_list>
#include <string>
#include <utility>

namespace sondrix {

inline Trip TripOf(std::string name, std::initializer_list<Sounding> soundings) {
  Trip trip;
  trip.name = std::move(name);
  for (const Sounding& sounding : soundings) trip.soundings.Add(sounding);
  return trip;
}

// Two trips with whatever a sounding may lack, and names that need care.
inline Survey SmallSurvey() {
  const auto used = [](double latitude, double longitude, double time, float depth, bool beginsLine = false) {
    Sounding sounding;
    sounding.latitude = latitude;
    sounding.longitude = longitude;
    sounding.time = time;
    sounding.recorded = depth;
    sounding.depth = depth;
    sounding.beginsLine = beginsLine;
    return sounding;
  };
  Sounding lost = used(55.5, 37.25, 1621063741, 0.5F, true), blind,
           corrected = used(-0.00000001, -180, -0.001, 3.123F);
  lost.fate = Fate::Lost;
  blind.fate = Fate::Blind;
  blind.recorded = blind.depth = static_cast<float>(Unknown);
  corrected.depth = 3.473F;
  Survey survey;
  survey.trips.push_back(TripOf("lake & sea, \"<1>\".sl2", {used(55.50000001, 37.2, 1621063740.25, 12.3F),
                                                            lost, used(55.6, 37.3, 1621063742, 7.25F)}));
  survey.trips.push_back(TripOf("empty.csv", {blind}));
  survey.trips.push_back(TripOf("south", {corrected, used(-33, 179.99999999, Unknown, 0)}));
  return survey;
}

}  // namespace sondrix
