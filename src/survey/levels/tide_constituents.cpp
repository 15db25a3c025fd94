#include "survey/levels/tide_constituents.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr TideSpeed Speeds[] = {
    {"M2", 28.9841042, 1, false},    {"K1", 15.0410686, 0.584, true},  {"S2", 30, 0.465, false},
    {"O1", 13.9430356, 0.415, true}, {"N2", 28.4397295, 0.192, false}, {"M4", 57.9682084, 0.1, false},
    {"P1", 14.9589314, 0.193, true}, {"K2", 30.0821373, 0.127, false}, {"Q1", 13.3986609, 0.080, true},
    {"SA", 0.0410686, 0.3, false},
};
constexpr double Turn = 360, HalfTurn = 180;  // degrees

}  // namespace

std::span<const TideSpeed> TideSpeeds() { return Speeds; }

std::vector<TideSpeed> SpeedsToldApart(double span) {
  const double hours = span / 3600;
  std::vector<TideSpeed> told;
  for (const TideSpeed& speed : Speeds) {
    const bool isApart = std::all_of(told.begin(), told.end(), [&](const TideSpeed& other) {
      return std::abs(speed.speed - other.speed) * hours >= Turn;
    });
    if (isApart && speed.speed * hours >= HalfTurn) told.push_back(speed);
  }
  return told;
}

}  // namespace sondrix
