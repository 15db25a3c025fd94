#include "recordings.h"
#include "sounders/sounder_formats.h"
#include "survey/made_bed.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

using made::BedKind;
using made::MadeTrip;
using made::Score;
using made::Sounder;

constexpr BedKind Even{};
constexpr BedKind Slopes{.hasSlopes = true};
constexpr BedKind Steps{.hasSteps = true};
constexpr BedKind Both{.hasSlopes = true, .hasSteps = true};
constexpr BedKind Often{.hasSlopes = true, .hasSteps = true, .every = 100};
constexpr BedKind Trenches{.hasTrenches = true};
constexpr BedKind Shallow{.hasSlopes = true, .hasSteps = true, .shallowest = 1, .deepest = 8};
constexpr BedKind Deep{.hasSlopes = true, .hasSteps = true, .shallowest = 20, .deepest = 60};

struct BedCase {
  const char* name;
  BedKind bed;
  Sounder sounder;
  double minStretches = 90, minSpikes = 99;  // percent found
  double maxLost = 0.1;                      // percent of sound soundings, beside wrong ones
};

const BedCase Cases[] = {
    {"even, 5 cm", Even, {.spacing = 0.05}, 95},
    {"even, 5 m", Even, {.spacing = 5}},
    {"slopes, 0.3 m", Slopes, {.spacing = 0.3}, 95},
    {"slopes, 1 m", Slopes, {.spacing = 1}},
    {"steps, 0.3 m", Steps, {.spacing = 0.3}, 95, 99, 0.15},
    {"steps, 1 m", Steps, {.spacing = 1}},
    {"slopes and steps, 5 cm", Both, {.spacing = 0.05}, 95},
    {"slopes and steps, 0.3 m", Both, {.spacing = 0.3}, 95},
    {"slopes and steps, 1 m", Both, {.spacing = 1}, 90, 99, 0.15},
    {"slopes and steps each 100 m", Often, {.spacing = 0.3}},
    {"trenches", Trenches, {.spacing = 0.3}, 95},
    {"ten at a place, without times",
     Both,
     {.spacing = 0.3, .resolution = 0.1, .held = 10, .hasTimes = false}},
    {"feet", Both, {.spacing = 0.3, .resolution = 0.3048}},
    {"10 cm noise", Both, {.spacing = 0.3, .noise = 0.1, .noiseOfDepth = 0}},
    {"no noise", Both, {.spacing = 0.3, .noise = 0, .noiseOfDepth = 0}},
    {"1 to 8 m", Shallow, {.spacing = 0.3}, 90, 99, 0.4},
    {"20 to 60 m", Deep, {.spacing = 0.3}},
    {"3 % noise", Both, {.spacing = 0.3, .noiseOfDepth = 0.03}, 80},
};

// Of eight trips over a bed.
Score ScoreOf(const BedCase& bed, std::size_t count, bool hasWrong) {
  Score score;
  for (std::uint64_t seed = 0; seed < 8; ++seed) {
    MadeTrip made = MakeTrip(bed.bed, bed.sounder, count, hasWrong, seed);
    CleanTrip(made.trip);
    score.Add(made);
  }
  return score;
}

TEST(CleanBeds, SoundOnesStayAndSpikesAndLostStretchesAreFound) {
  for (const BedCase& bed : Cases) {
    const Score sound = ScoreOf(bed, 10000, false), score = ScoreOf(bed, 20000, true);
    EXPECT_LE(100 * sound.soundLost / sound.sound, 0.01) << bed.name;
    ASSERT_TRUE(score.spikes > 500 && score.stretches > 100);
    EXPECT_GE(100 * score.spikesFound / score.spikes, bed.minSpikes) << bed.name;
    EXPECT_GE(100 * score.stretchesFound / score.stretches, bed.minStretches) << bed.name;
    EXPECT_LE(100 * score.soundLost / score.sound, bed.maxLost) << bed.name;
  }
}

// Wrong stretches among those of a real trip that its own cleaning uses.
MadeTrip PlantInto(const SoundingList& soundings, std::uint64_t seed) {
  made::Random random(seed);
  MadeTrip made;
  std::vector<double> depths;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    if (soundings[i].fate != Fate::Used) continue;
    made.trip.soundings.Add(soundings[i]);
    depths.push_back(static_cast<double>(soundings[i].recorded));
  }
  PlantStretches(made, depths, random);
  for (std::size_t i = 0; i < depths.size(); ++i)
    made.trip.soundings[i].recorded = static_cast<float>(depths[i]);
  return made;
}

TEST(CleanBeds, StretchesPlantedInRealLinesAreFound) {
  const std::filesystem::path folder = RecordingsFolder();
  if (folder.empty()) GTEST_SKIP() << "no real trips here";
  Score score;
  for (const char* name : {"bay/depth_map_data_20190928_0715.csv", "bay/depth_map_data_20220410_0714.csv",
                           "karst/L15_NS_20180313165537.csv", "karst/L11_SN_20180313163807.csv"}) {
    const std::string path = (folder / "trips" / name).string();
    const SounderFormat* format = Recognise(path);
    ASSERT_NE(format, nullptr) << name;
    Reading reading;
    format->read(path, {}, {}, reading);
    Trip trip;
    trip.soundings = std::move(reading.trips.at(0).soundings);
    CleanTrip(trip);
    for (std::uint64_t seed = 0; seed < 3; ++seed) {
      MadeTrip made = PlantInto(trip.soundings, seed);
      CleanTrip(made.trip);
      score.Add(made);
    }
  }
  ASSERT_GT(score.stretches, 50);
  EXPECT_GE(100 * score.stretchesFound / score.stretches, 80);
  EXPECT_LE(100 * score.soundLost / score.sound, 5);
}

}  // namespace
}  // namespace sondrix
