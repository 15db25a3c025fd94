#include "survey/clean.h"

#include "survey/made_bed.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

using made::SoundingAt;

// A letter each: used, no-position, blind, lost, spike, repeat; upper case where it begins a line.
std::string FatesOf(const SoundingList& soundings) {
  std::string fates;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const char letter = "unblsr"[static_cast<std::size_t>(soundings[i].fate)];
    fates += soundings[i].beginsLine ? static_cast<char>(letter - 'a' + 'A') : letter;
  }
  return fates;
}

struct Place {
  double north = 0, time = Unknown, depth = 5;
};

Trip TripOf(const std::vector<Place>& places) {
  Trip trip;
  for (const Place& place : places) trip.soundings.Add(SoundingAt(place.north, 0, place.depth, place.time));
  return trip;
}

TEST(Clean, FixesThatNoBoatComesToAndRepeatsAreFoundAndLinesBegin) {
  struct Case {
    const char* name;
    std::vector<Place> places;
    const char* fates;
  };
  const Case cases[] = {
      {"a lone outlier", {{0, 0}, {2, 1}, {5000, 2}, {6, 3}, {8, 4}}, "uunuu"},
      {"two that agree", {{0, 0}, {2, 1}, {5000, 2}, {5001, 3}, {8, 4}, {9, 30}}, "uunnuu"},
      {"a wrong fix at first", {{9000, 0}, {9000, 1}, {4, 2}, {6, 3}, {8, 60}}, "nnuuu"},
      {"no time: a line begins", {{0}, {2}, {5000}, {5002}, {5004}}, "uuUuu"},
      {"the clock was set back", {{0, 100}, {2, 101}, {4, 50}, {6, 51}}, "uuuu"},
      {"a fix that was held while the boat ran",
       {{0, 0}, {4, 1}, {4, 2}, {4, 9.9}, {44, 10}, {48, 11}},
       "uuuuuu"},
      {"an hour later elsewhere", {{0, 0}, {2, 1}, {4, 2}, {9000, 3600}, {9002, 3601}}, "uuuUu"},
      {"a pause at a place", {{0, 0}, {2, 1}, {2, 1000}, {4, 1001}}, "uuUu"},
      {"repeats", {{0, 1}, {0, 1}, {1, 2, 5.1}, {1, 2, 5.2}, {2, 3}, {2, 4}, {2, 4}}, "uruuuur"},
      {"in no order", {{0, 5}, {1, 6}, {2, 1}, {0, 5}, {1, 6}, {2, 1}}, "uuurrr"},
      {"without times", {{0}, {0}, {0}}, "uuu"},
  };
  for (const Case& test : cases) {
    Trip trip = TripOf(test.places);
    CleanTrip(trip);
    EXPECT_EQ(FatesOf(trip.soundings), test.fates) << test.name;
  }
}

TEST(Clean, ATrackThatGoesOnElsewhereIsKept) {
  std::vector<Place> places;
  for (int i = 0; i < 400; ++i) places.push_back({(i < 200 ? 0.0 : 9000.0) + i, static_cast<double>(i)});
  Trip trip = TripOf(places);
  CleanTrip(trip);
  EXPECT_EQ(CountFates(trip.soundings)[0], 400u);
  EXPECT_TRUE(trip.soundings[200].beginsLine);
}

TEST(Clean, WithoutPositionOrDepth) {
  const auto make = [] {
    Trip trip;
    for (const double depth : {5.0, 0.0, double{Unknown}, -3.0, 5.1})
      trip.soundings.Add(SoundingAt(0, 0, depth));
    for (int i = 0; i < 4; ++i) trip.soundings.Add(SoundingAt(1, 0, 5));
    trip.soundings[5].latitude = Unknown;
    trip.soundings[6].latitude = trip.soundings[6].longitude = 0;
    trip.soundings[7].latitude = 95;
    return trip;
  };
  Trip cleaned = make(), off = make();
  CleanTrip(cleaned);
  CleanOff(off);
  EXPECT_EQ(FatesOf(cleaned.soundings), "ubbbunnnu");
  EXPECT_EQ(FatesOf(off.soundings), "ubbbunnnu");
  off.soundings.Add(SoundingAt(100, 0, 5));
  CleanOff(off);
  EXPECT_TRUE(off.soundings[9].beginsLine && !off.soundings[8].beginsLine);
}

// One bed under all, with a track's depth over 200 m, half a metre apart.
// Crosses that of the others at so many metres where it is given.
using Track = std::pair<std::function<double(double)>, double>;
Trip TripOf(const std::vector<Track>& tracks) {
  Trip trip;
  for (const auto& [depth, crossing] : tracks)
    for (double way = 0; way < 200; way += 0.5)
      trip.soundings.Add(std::isnan(crossing) ? SoundingAt(way, 0, depth(way))
                                              : SoundingAt(crossing, way - 100, depth(way)));
  return trip;
}

std::uint64_t CountOf(const Trip& trip, Fate fate) {
  return CountFates(trip.soundings)[static_cast<std::size_t>(fate)];
}

TEST(Clean, WhatABedExplainsStaysAndWhatNoneExplainsIsLostOrBlind) {
  const auto within = [](double way) { return way >= 80 && way < 120; };
  const auto isHeld = [](double way) { return std::fmod(way, 50) < 15; };
  const struct {
    const char* name;
    std::function<double(double)> depth;
    Fate fate;
    std::uint64_t count;
  } cases[] = {
      {"a wall of 15 m", [&](double way) { return way < 100 ? 6.0 : 21.0; }, Fate::Lost, 0},
      {"a trench of 5 m", [&](double way) { return within(way) ? 17.0 : 12.0; }, Fate::Lost, 0},
      {"a ridge of 5 m with its foot at 10 m", [&](double way) { return within(way) ? 5.0 : 10.0; },
       Fate::Lost, 0},
      {"45 degrees down and up", [&](double way) { return std::max(1.0, 30 - std::abs(way - 100)); },
       Fate::Lost, 0},
      {"8 m off", [&](double way) { return within(way) ? 20.0 : 12.0; }, Fate::Lost, 80},
      {"half", [&](double way) { return (within(way) ? 0.5 : 1.0) * (6 + way / 60); }, Fate::Lost, 80},
      {"double", [&](double way) { return (within(way) ? 2.0 : 1.0) * (6 + way / 60); }, Fate::Lost, 80},
      {"another bottom", [&](double way) { return within(way) ? 38.0 + way / 100 : 12.0; }, Fate::Lost, 80},
      {"the smallest depth held",
       [&](double way) { return isHeld(way) ? 0.4 : 9 + std::fmod(way, 1.5) * 0.2; }, Fate::Blind, 120},
      {"come to by degrees",
       [&](double way) { return std::max(0.4, std::abs(std::fmod(way, 50) - 25) * 0.2 - 1); }, Fate::Blind,
       0},
      {"2 m held is a bed", [&](double way) { return isHeld(way) ? 2.0 : 9.0; }, Fate::Blind, 0},
      {"single ones", [&](double way) { return std::fmod(way, 50) == 15 ? 0.4 : 9.0; }, Fate::Blind, 0},
  };
  for (const auto& [name, depth, fate, count] : cases) {
    Trip trip = TripOf({{depth, Unknown}});
    CleanTrip(trip);
    EXPECT_EQ(CountOf(trip, fate), count) << name;
  }
}

TEST(Clean, WhatScattersAsNoBedDoesIsLost) {
  struct Case {
    const char* name;
    double scatter;       // metres up and down by turns
    std::size_t end;      // behind the last sounding that scatters; 160 is the first
    std::size_t gaps[2];  // of ten soundings, where they begin
    std::uint64_t lost;
  };
  for (const Case& test : {Case{"a lost bottom", 6, 240, {150, 240}, 80},
                           {"a rough bed", 0.5, 240, {150, 240}, 0},
                           {"held numbers behind a quarter that scatters", 6, 200, {150, 300}, 140}}) {
    Trip trip = TripOf({{[](double) { return 50; }, Unknown}});
    for (std::size_t i = 160; i < test.end; ++i)
      trip.soundings[i].recorded += static_cast<float>(test.scatter * (static_cast<double>(i * 7 % 5) - 2));
    for (const std::size_t gap : test.gaps) {
      for (std::size_t i = gap; i < gap + 10; ++i) trip.soundings[i].recorded = 0;
    }
    CleanTrip(trip);
    EXPECT_EQ(CountOf(trip, Fate::Lost), test.lost) << test.name;
  }
}

TEST(Clean, CrossingTripsDecide) {
  const auto even = [](double depth, double crossing) {
    return Track([depth](double) { return depth; }, crossing);
  };
  const auto within = [](double depth) {
    return Track([depth](double way) { return way >= 80 && way < 120 ? depth : 10.0; }, Unknown);
  };
  const Track ridge = within(5), trench = within(20);
  const struct {
    const char* name;
    std::vector<std::vector<Track>> trips;
    std::vector<std::uint64_t> lost;
  } cases[] = {
      {"what looks like a ridge isn't there", {{ridge}, {even(10, 100)}}, {80, 0}},
      {"the ridge is there", {{ridge}, {even(5.2, 100)}}, {0, 0}},
      {"what looks like an echo is a trench", {{trench}, {even(20.1, 100)}}, {0, 0}},
      {"two against one", {{even(10, 100)}, {ridge}, {even(10.3, 100)}}, {0, 80, 0}},
      {"the water stood 8 m higher", {{ridge}, {even(18, 30), even(13, 100)}}, {0, 0}},
  };
  for (const auto& [name, trips, lost] : cases) {
    Survey survey;
    std::vector<Stretches> stretches;
    for (const auto& tracks : trips) {
      survey.trips.push_back(TripOf(tracks));
      stretches.push_back(CleanTrip(survey.trips.back()));
    }
    CleanByCrossings(survey, stretches);
    std::vector<std::uint64_t> found;
    for (const Trip& trip : survey.trips) found.push_back(CountOf(trip, Fate::Lost));
    EXPECT_EQ(found, lost) << name;
  }
}

}  // namespace
}  // namespace sondrix
