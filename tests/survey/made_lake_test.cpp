#include "samples/chart_lake.h"
#include "samples/trip_files.h"
#include "sounders/sounder_formats.h"
#include "survey/clean.h"
#include "survey/parts.h"
#include "survey/same_source.h"
#include "survey/survey.h"
#include "temporary_folder.h"

namespace sondrix {
namespace {

// The trips over the made lake as their readers give them, beside their truth.
struct ReadLake {
  std::vector<ChartTrip> truth = ChartTrips();
  Survey survey;

  ReadLake() {
    const TemporaryFolder folder;
    WriteChartTrips(folder.Path("lake"));
    for (const ChartTrip& made : truth) {
      Trip trip;
      trip.name = made.File;
      trip.path = folder.Path("lake/" + made.File);
      const SounderFormat* format = Recognise(trip.path);
      if (format == nullptr) continue;
      trip.kind = format->name;
      Reading reading;
      format->read(trip.path, {}, {}, reading);
      if (reading.trips.size() == 1) trip.soundings = std::move(reading.trips[0].soundings);
      survey.trips.push_back(std::move(trip));
    }
  }
};
ReadLake& Lake() {
  static ReadLake lake;
  return lake;
}

TEST(MadeLake, IsReadAsItWasMade) {
  ASSERT_EQ(Lake().survey.trips.size(), Lake().truth.size());
  for (std::size_t t = 0; t < Lake().truth.size(); ++t) {
    const ChartTrip& made = Lake().truth[t];
    const SoundingList& soundings = Lake().survey.trips[t].soundings;
    SCOPED_TRACE(made.File);
    ASSERT_EQ(soundings.size(), made.Soundings.size());
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < soundings.size(); ++i) {
      const Sounding& sounding = soundings[i];
      const TrueSounding& truth = made.Soundings[i];
      // A sound depth tells the bed but for noise.
      if (truth.What == Trouble::None && !(std::abs(truth.Told - truth.Depth()) < 0.25)) ++wrong;
      // Rounded to tenths of a foot at worst, and to seconds.
      if (truth.Told > 0 && std::abs(sounding.recorded - truth.Told) > 0.017) ++wrong;
      if (truth.What == Trouble::NoFix) continue;
      if (!(std::abs(sounding.time - static_cast<double>(made.Start) - truth.At.Time) < 0.8)) ++wrong;
      if (truth.What == Trouble::Jump) continue;
      const PlanePlace place = ChartLakePlane({sounding.latitude, sounding.longitude});
      if (!(std::hypot(place.X - truth.At.X, place.Y - truth.At.Y) < 3.5)) ++wrong;
    }
    EXPECT_EQ(wrong, 0U);
  }
}

TEST(MadeLake, NamesWhatIsRepeatedAndWhatGoesOn) {
  Survey& survey = Lake().survey;
  const std::vector<RepeatedTrip> repeated = FindRepeatedTrips(survey);
  ASSERT_EQ(repeated.size(), 1U);
  EXPECT_EQ(survey.trips[repeated[0].of].name, Lake().truth[repeated[0].trip].Copies);
  JoinParts(survey);
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    const std::string& before = Lake().truth[t].GoesOn;
    EXPECT_EQ(survey.trips[survey.trips[t].journey].name, before.empty() ? survey.trips[t].name : before);
  }
}

TEST(MadeLake, IsCleaned) {
  Survey& survey = Lake().survey;
  std::vector<Stretches> stretches;
  for (Trip& trip : survey.trips) stretches.push_back(CleanTrip(trip));
  CleanByCrossings(survey, stretches);
  // By trouble: how many, and how many of them are used.
  std::array<double, 8> count{}, used{};
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    const std::vector<TrueSounding>& truth = Lake().truth[t].Soundings;
    if (!Lake().truth[t].Copies.empty()) continue;
    for (std::size_t i = 0; i < truth.size(); ++i) {
      const auto trouble = static_cast<std::size_t>(truth[i].What);
      ++count[trouble];
      if (survey.trips[t].soundings[i].fate == Fate::Used) ++used[trouble];
    }
  }
  struct Case {
    Trouble what;
    double least, most;  // share that is used
  };
  for (const Case& test :
       {Case{Trouble::None, 0.999, 1}, Case{Trouble::Spike, 0, 0.01}, Case{Trouble::Lost, 0, 0.2},
        Case{Trouble::Blind, 0, 0.05}, Case{Trouble::NoFix, 0, 0}, Case{Trouble::Jump, 0, 0},
        Case{Trouble::Repeat, 0, 0}}) {
    const auto trouble = static_cast<std::size_t>(test.what);
    EXPECT_GE(used[trouble], test.least * count[trouble]) << trouble;
    EXPECT_LE(used[trouble], test.most * count[trouble]) << trouble;
  }
}

}  // namespace
}  // namespace sondrix
