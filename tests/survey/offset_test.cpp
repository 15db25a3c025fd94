#include "survey/offset.h"

#include "samples/xorshift.h"
#include "survey/survey_trips.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

constexpr double Pi = std::numbers::pi;

// Where the boat is after so many seconds, and its course.
struct Pose {
  double x = 0, y = 0, course = 0;  // metres, radians
};
using Way = std::function<Pose(double seconds)>;

Way Straight(double course, double speed) {
  return [=](double t) { return Pose{t * speed * std::sin(course), t * speed * std::cos(course), course}; };
}

Pose Circle(double t) {  // of 12 m radius at 1.5 m/s, to the right
  const double turn = t * 1.5 / 12;
  return {12 - 12 * std::cos(turn), 12 * std::sin(turn), turn};
}

Pose WithStops(double t) {  // half of each minute the boat lies still
  const double minute = std::floor(t / 60);
  return {0, 30 * minute + std::min(30.0, t - 60 * minute), 0};
}

// The metres by which the worst of the soundings of ten minutes is beside the transducer's place.
double WorstError(const Way& way, double right, double ahead, double unit, double jitter) {
  XorShift random(3);
  Trip trip = MadeTrip("a", "SL2", 2400, [&](std::size_t i) {
    const Pose pose = way(static_cast<double>(i) / 4);
    const auto told = [&](double at) {
      return (unit > 0 ? std::round(at / unit) * unit : at) + jitter * random.Signed();
    };
    return SoundingAt(told(pose.x), told(pose.y), Unknown, 5);
  });
  SoundingList before;
  for (std::size_t i = 0; i < trip.soundings.size(); ++i) before.Add(trip.soundings[i]);
  EXPECT_EQ(ApplyOffset(trip.soundings, right, ahead), 0U);
  double worst = 0;
  for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
    const PlanePlace from = ChartLakePlane({before[i].latitude, before[i].longitude});
    const PlanePlace to = ChartLakePlane({trip.soundings[i].latitude, trip.soundings[i].longitude});
    const Pose pose = way(static_cast<double>(i) / 4);
    const double x = ahead * std::sin(pose.course) + right * std::cos(pose.course);
    const double y = ahead * std::cos(pose.course) - right * std::sin(pose.course);
    worst = std::max(worst, std::hypot(to.X - from.X - x, to.Y - from.Y - y));
    EXPECT_EQ(trip.soundings[i].recorded, 5);
  }
  return worst;
}

TEST(Offset, FollowsTheCourse) {
  const struct {
    const char* name;
    Way way;
    double right, ahead, unit, jitter, most;  // metres
  } cases[] = {
      {"north", Straight(0, 1), 0, 2, 0, 0, 0.01},
      {"south-west", Straight(3.9, 2), 1, -3, 0, 0, 0.01},
      {"fast", Straight(1.2, 9), 1, 0, 0, 0, 0.01},
      {"whole metres", Straight(0.5, 1), 0, 2, 0.56, 0, 0.4},
      {"whole metres, slowly", Straight(2.2, 0.2), 0, 2, 0.56, 0, 0.4},
      {"a circle, whose beginning shows least", Circle, 1, 1, 0, 0, 0.65},
      {"stops", WithStops, 1, 2, 0, 0.1, 0.25},
  };
  for (const auto& [name, way, right, ahead, unit, jitter, most] : cases)
    EXPECT_LT(WorstError(way, right, ahead, unit, jitter), most) << name;
}

TEST(Offset, EndsAtGapsAndLeavesWhatHasNoCourse) {
  // A line to the north, a false fix, a line to the east that begins far away, and a boat at its mooring.
  Trip trip = MadeTrip("a", "SL2", 400, [](std::size_t i) {
    const auto step = static_cast<double>(i % 100);
    Sounding sounding = i < 100   ? SoundingAt(0, step, Unknown, 3)
                        : i < 200 ? SoundingAt(step, 500, Unknown, 3)
                        : i < 300 ? SoundingAt(100 + step, 499, Unknown, 3)
                                  : SoundingAt(-300 + 0.4 * std::sin(step), 0, Unknown, 3);
    sounding.beginsLine = i == 200 || i == 300;
    if (i == 50) sounding = Sounding{};
    if (i == 60) sounding.fate = Fate::NoPosition;
    return sounding;
  });
  EXPECT_EQ(ApplyOffset(trip.soundings, 0, 2), 100U);
  for (const auto& [i, x, y] :
       {std::tuple(99U, 0, 101), {100U, 2, 500}, {199U, 101, 500}, {200U, 102, 499}}) {
    const PlanePlace at = ChartLakePlane({trip.soundings[i].latitude, trip.soundings[i].longitude});
    EXPECT_NEAR(at.X, x, 0.1) << i;
    EXPECT_NEAR(at.Y, y, 0.1) << i;
  }
  const Sounding& wrong = trip.soundings[60];
  EXPECT_NEAR(ChartLakePlane({wrong.latitude, wrong.longitude}).Y, 60, 0.01);
  EXPECT_FALSE(trip.soundings[50].HasPosition());
}

TEST(Offset, CrossesTheDateLine) {
  Trip trip = MadeTrip("a", "SL2", 20, [](std::size_t i) {
    Sounding sounding;
    sounding.latitude = 0;
    sounding.longitude = std::remainder(179.9999 + static_cast<double>(i) * 1e-5, 360);
    return sounding;
  });
  EXPECT_EQ(ApplyOffset(trip.soundings, 0, 11.1319), 0U);
  EXPECT_NEAR(std::abs(trip.soundings[0].longitude), 180, 1.1e-8);
  EXPECT_NEAR(trip.soundings[19].longitude, -179.99981, 1.1e-8);
}

TEST(Offset, DraftIsAddedToDepthsAlone) {
  const float recorded[] = {1.25F, 0, std::numeric_limits<float>::quiet_NaN(), 7};
  Trip trip = MadeTrip("a", "SL2", 4, [&](std::size_t i) { return SoundingAt(0, 0, Unknown, recorded[i]); });
  ApplyDraft(trip.soundings, 0.3);
  EXPECT_EQ(trip.soundings[0].depth, 1.55F);
  EXPECT_EQ(trip.soundings[0].recorded, 1.25F);
  EXPECT_EQ(trip.soundings[1].depth, 0);
  EXPECT_TRUE(std::isnan(trip.soundings[2].depth));
  EXPECT_EQ(trip.soundings[3].depth, 7.3F);
}

}  // namespace
}  // namespace sondrix
