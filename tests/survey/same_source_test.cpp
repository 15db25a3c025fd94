#include "survey/same_source.h"

#include "samples/xorshift.h"
#include "survey/place_order.h"
#include "survey/sounding_probe.h"
#include "survey/survey_trips.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

constexpr double Metre = 1 / 111'200.0;  // degrees of latitude

// A recording and the converter's table of it, of the made lake.
struct MadeLake {
  std::vector<ChartTrip> trips = ChartTrips();
  Trip recording = RecordedTrip(trips[1]), table = ConvertedTrip(trips[2]);
};
const MadeLake& Lake() {
  static const MadeLake lake;
  return lake;
}

void AsItIs(Sounding&) {}
void WithoutTime(Sounding& sounding) { sounding.time = Unknown; }
void AWeekLater(Sounding& sounding) { sounding.time += 7 * 86'400; }
void ThreeHoursOff(Sounding& sounding) { sounding.time -= 3 * 3600; }
void ToTheNorth(Sounding& sounding) { sounding.latitude += 2.5 * Metre; }
void Deeper(Sounding& sounding) { sounding.recorded += 0.3F; }

// "1 of 0" for each trip that is left out.
std::string RepeatedOf(std::vector<Trip> trips) {
  Survey survey;
  for (Trip& trip : trips) survey.trips.push_back(std::move(trip));
  std::string text;
  for (const RepeatedTrip& repeated : FindRepeatedTrips(survey))
    text += std::to_string(repeated.trip) + " of " + std::to_string(repeated.of) + ";";
  return text;
}

template <typename... Trips>
std::vector<Trip> ListOf(Trips&&... trips) {
  std::vector<Trip> list;
  (list.push_back(std::forward<Trips>(trips)), ...);
  return list;
}

Trip Copy(const Trip& trip, void (*change)(Sounding&) = AsItIs, std::string path = "b.sl2",
          std::string kind = "SL2", std::size_t every = 1) {
  return ChangedTrip(trip, std::move(path), std::move(kind), change, every);
}

Trip Recording(void (*change)(Sounding&) = AsItIs, std::string path = "b.sl2", std::string kind = "SL2") {
  return Copy(Lake().recording, change, std::move(path), std::move(kind));
}
Trip Table(void (*change)(Sounding&) = AsItIs, std::string path = "a.csv", std::size_t every = 1) {
  return Copy(Lake().table, change, std::move(path), "table", every);
}

// Another sounder on nearly the same way: noise of its own on places and depths.
Trip Stranger(const Trip& trip, double metresAside, void (*change)(Sounding&), double unit, double noise,
              std::size_t every = 1) {
  XorShift random(7);
  double drift = 0;
  return ChangedTrip(
      trip, "c.csv", "table",
      [&](Sounding& sounding) {
        drift += 0.02 * random.Signed() - 0.002 * drift;
        sounding.latitude += (metresAside + drift) * Metre;
        const double depth = static_cast<double>(sounding.recorded) + noise * random.Signed();
        sounding.recorded = static_cast<float>(std::round(depth / unit) * unit);
        change(sounding);
      },
      every);
}

TEST(SameSource, FindsWhatWasGivenTwiceAndLeavesStrangers) {
  const Trip& recording = Lake().recording;
  const Trip& table = Lake().table;
  struct Case {
    const char* name;
    Trip first, second;
    const char* repeated = "";
  };
  Case cases[] = {
      {"a recording twice", Recording(), Recording(AsItIs, "c.sl2"), "1 of 0;"},
      {"the converter's table before its recording", Table(), Recording(), "0 of 1;"},
      {"without its times", Recording(), Table(WithoutTime), "1 of 0;"},
      {"a recording without a date", Recording(WithoutTime), Table(), "1 of 0;"},
      {"with times taken for another zone's", Recording(), Table(ThreeHoursOff), "1 of 0;"},
      {"with the transducer in its place", Recording(), Table(ToTheNorth), "1 of 0;"},
      {"a log and a table with its fixes", Recording(AsItIs, "a.log", "NMEA 0183"),
       Table(WithoutTime, "a.txt"), "1 of 0;"},
      {"a thinned table before the whole", Table(WithoutTime, "a.csv", 3), Table(WithoutTime, "b.csv"),
       "0 of 1;"},
      {"equal tables: the earlier stays", Table(WithoutTime), Table(WithoutTime, "b.csv"), "1 of 0;"},
      {"depths corrected, places and times kept", Recording(), Recording(Deeper, "a.gpx", "GPX"), "1 of 0;"},
      {"two boats side by side", Recording(), Stranger(recording, 4, AsItIs, 0.01, 0.03)},
      {"and in decimetres", Stranger(table, 0, AsItIs, 0.1, 0.03), Stranger(table, 4, AsItIs, 0.1, 0.03)},
      {"two sounders of a boat", Recording(), Stranger(recording, 0.5, AsItIs, 0.01, 0.03, 4)},
      {"the way of last week", Recording(), Stranger(recording, 0.5, AWeekLater, 0.001, 0)},
      {"both without times", Recording(), Stranger(recording, 0.5, WithoutTime, 0.01, 0.04, 5)},
      {"a place with other depths", Table(WithoutTime), Stranger(table, 0, WithoutTime, 0.01, 0.05)},
      {"a log and a boat beside it", Recording(AsItIs, "a.log", "NMEA 0183"),
       Stranger(recording, 4, WithoutTime, 0.1, 0.03)},
      {"nothing with a place", Table(WithoutTime),
       Table([](Sounding& s) { s.longitude = Unknown; }, "b.csv")},
  };
  for (Case& test : cases)
    EXPECT_EQ(RepeatedOf(ListOf(std::move(test.first), std::move(test.second))), test.repeated) << test.name;
  // All other trips of the made lake.
  std::vector<Trip> others;
  for (const ChartTrip& trip : Lake().trips)
    if (trip.Copies.empty()) others.push_back(RecordedTrip(trip));
  EXPECT_EQ(RepeatedOf(std::move(others)), "");
}

TEST(SameSource, TheFullerStaysAndThenTheOneThatIsNotRetold) {
  Trip retold = Table(AsItIs, "all.csv"), second = Copy(Lake().recording, AsItIs, "all.csv", "table");
  retold.name = "lake.csv";
  second.name = "lake.sl2";
  EXPECT_EQ(RepeatedOf(ListOf(std::move(retold), Table(AsItIs, "lake.csv"), std::move(second))),
            "0 of 2;1 of 2;");
}

TEST(SameSource, ATrackOfSeveralTripsLoses) {
  std::vector<Trip> trips =
      ListOf(RecordedTrip(Lake().trips[0]), RecordedTrip(Lake().trips[1]), Table(AWeekLater));
  Trip all = Copy(trips[0], AsItIs, "all.gpx", "GPX");
  for (std::size_t t = 1; t < trips.size(); ++t)
    for (std::size_t i = 0; i < trips[t].soundings.size(); ++i) all.soundings.Add(trips[t].soundings[i]);
  trips.insert(trips.begin(), Copy(all, AsItIs, "all.gpx", "GPX"));
  // Twice: neither holds the other's soundings alone.
  trips.push_back(Copy(all, AsItIs, "again.gpx", "GPX"));
  EXPECT_EQ(RepeatedOf(std::move(trips)), "0 of 1;4 of 1;");
}

TEST(SameSource, TellsWhatIsRepeated) {
  Survey survey;
  survey.trips = ListOf(Recording(AsItIs, "x/a.sl2"), Recording(AsItIs, "y/a.sl2"), Table());
  const std::vector<RepeatedTrip> repeated = FindRepeatedTrips(survey);
  ASSERT_EQ(repeated.size(), 2U);
  EXPECT_EQ(repeated[0].words, "the same soundings as x/a.sl2");
  EXPECT_EQ(repeated[1].words, "its soundings stand in a.sl2");
}

TEST(PlaceOrder, IsThatOfTheNearerNeighbour) {
  const auto at = [](double longitude, double latitude) {
    return SoundingSpan{
        .count = 1, .west = longitude, .east = longitude, .south = latitude, .north = latitude};
  };
  const SoundingSpan others[] = {at(13, 53), SoundingSpan()};
  EXPECT_TRUE(LiesBesideExchanged(at(53.4, 13), others));
  EXPECT_FALSE(LiesBesideExchanged(at(13.4, 53), others));
  EXPECT_FALSE(LiesBesideExchanged(at(53.6, 13), others));
  EXPECT_FALSE(LiesBesideExchanged(at(53, 13), std::span(others).last(1)));
}

}  // namespace
}  // namespace sondrix
