#include "samples/echogram.h"
#include "samples/made_track.h"
#include "sounders/sl/sl_reader.h"
#include "temporary_folder.h"

#include <algorithm>
#include <numbers>

namespace sondrix {
namespace {

// Of all soundings of a made track against the truth, metres on the ground.
struct TrackErrors {
  double raw = 0, mended = 0;          // of what is stored and of what is read, root mean square
  double worst = 0;                    // of what is read
  double offFix = 0;                   // at a new fix, from what is stored, Mercator metres in an axis
  std::size_t unknown = 0, lines = 0;  // soundings without a position, and lines begun
};

class SlTrack : public testing::Test {
 protected:
  TrackErrors ErrorsOf(const MadeTrack& track, int formatWord = 2) const {
    const std::vector<MadePing> pings = PingsOf(track);
    const std::string path = folder_.Path("track");
    EXPECT_TRUE(WriteBytes(path, RecordingOf(pings, formatWord)));
    Reading reading;
    ReadSl(path, {}, {}, reading);
    const SoundingList& soundings = reading.trips[0].soundings;
    EXPECT_EQ(soundings.size(), pings.size());
    constexpr double degree = std::numbers::pi / 180;
    const double metresPerUnit = std::cos(track.latitude * degree);
    TrackErrors errors;
    std::size_t count = 0;
    for (std::size_t i = 0; i < soundings.size(); ++i) {
      const MadePing& ping = pings[i];
      errors.lines += soundings[i].beginsLine;
      if (!soundings[i].HasPosition() && ++errors.unknown > 0) continue;
      const double x = soundings[i].longitude * degree * MadeRadius;
      const double y = MadeRadius * std::asinh(std::tan(soundings[i].latitude * degree));
      const double off = std::hypot(x - ping.x, y - ping.y) * metresPerUnit;
      errors.mended += off * off;
      errors.raw += std::pow(std::hypot(ping.storedX - ping.x, ping.storedY - ping.y) * metresPerUnit, 2);
      errors.worst = std::max(errors.worst, off);
      if (i > 0 && (ping.storedX != pings[i - 1].storedX || ping.storedY != pings[i - 1].storedY))
        errors.offFix = std::max({errors.offFix, std::abs(x - ping.storedX), std::abs(y - ping.storedY)});
      ++count;
    }
    errors.raw = std::sqrt(errors.raw / static_cast<double>(count));
    errors.mended = std::sqrt(errors.mended / static_cast<double>(count));
    return errors;
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(SlTrack, IsAtMostHalfAsFarOffAsWhatIsStored) {
  struct Row {
    double speed, turn, sway, most;  // of the mended error, as a share of the raw one
  };
  for (const Row& row : {Row{0.3, 0, 0, 0.6}, Row{0.3, 0.1, 0, 0.6}, Row{0.3, 0, 0.4, 0.6}, Row{1, 0, 0, 0.4},
                         Row{1, 0.1, 0, 0.4}, Row{1, 0, 0.4, 0.45}, Row{4, 0, 0, 0.15}, Row{4, 0.1, 0, 0.15},
                         Row{4, 0, 0.4, 0.2}}) {
    for (const double fixEvery : {1.0, 2.0}) {
      double raw = 0, mended = 0;
      for (int run = 0; run < 8; ++run) {
        const MadeTrack track = {.speed = row.speed,
                                 .fixEvery = fixEvery,
                                 .turn = row.turn,
                                 .sway = row.sway,
                                 .heading = 0.4 + 0.8 * run,
                                 .latitude = -60 + 17.0 * run,
                                 .seed = 1000003U * static_cast<std::uint32_t>(run + 1)};
        const TrackErrors errors = ErrorsOf(track, 2 + run % 2);
        EXPECT_LE(errors.mended, errors.raw * (row.speed < 1 ? 1 : 0.55)) << row.speed << " " << run;
        EXPECT_LE(errors.offFix, 0.5) << row.speed << " " << run;
        EXPECT_EQ(errors.unknown + errors.lines, 0U);
        raw += errors.raw * errors.raw;
        mended += errors.mended * errors.mended;
      }
      EXPECT_LE(std::sqrt(mended / raw), row.most) << row.speed << " " << row.turn << row.sway << fixEvery;
    }
  }
}

// What goes wrong with fixes: the mended track is no worse for it, and swings out nowhere.
TEST_F(SlTrack, StaysSoundWhereFixesDoNot) {
  struct Row {
    std::string_view name;
    MadeTrack track;
    double most, worst;  // of the mended error as a share of the raw one; metres
  };
  const Row rows[] = {
      {"at rest", {.speed = 0}, 1.01, 0.5},
      {"at rest with noise", {.speed = 0, .noise = 0.7}, 0.95, 3},
      {"with noise", {.speed = 1, .noise = 1}, 0.95, 4.5},
      {"stops and goes on", {.speed = 4, .restFrom = 60, .restUntil = 100}, 0.2, 2.5},
      {"fixes often", {.speed = 4, .fixEvery = 0.2}, 0.5, 0.5},
      {"fixes seldom", {.speed = 4, .fixEvery = 5, .turn = 0.05}, 0.2, 9},
      {"fix lost shortly", {.speed = 2, .lostFrom = 60, .lostUntil = 63}, 0.3, 2},
      {"fix lost to the end", {.speed = 2, .lostFrom = 170, .lostUntil = 190}, 1.01, 24},
      {"wrong fix", {.speed = 1, .jumpAt = 60, .jump = 10}, 1, 11},
      {"wrong fix far off", {.speed = 1, .jumpAt = 60, .jump = 500}, 1.01, 502},
  };
  for (const Row& row : rows) {
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
      MadeTrack track = row.track;
      track.seed = 69621U * seed;
      const TrackErrors errors = ErrorsOf(track);
      EXPECT_LE(errors.mended, row.most * errors.raw) << row.name << seed;
      EXPECT_LE(errors.worst, row.worst) << row.name << seed;
      EXPECT_LE(errors.offFix, 0.5) << row.name << seed;
      EXPECT_EQ(errors.unknown + errors.lines, 0U) << row.name << seed;
    }
  }
}

TEST_F(SlTrack, IsUnknownWhereTheFixWasLostOnTheWay) {
  const TrackErrors errors = ErrorsOf({.speed = 2, .turn = 0.1, .lostFrom = 60, .lostUntil = 90});
  EXPECT_NEAR(static_cast<double>(errors.unknown), 29.5 * 15, 15);
  EXPECT_EQ(errors.lines, 1U);
  EXPECT_LE(errors.worst, 2);
}

}  // namespace
}  // namespace sondrix
