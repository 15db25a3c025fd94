#include "samples/chart_trip.h"

#include "samples/chart_lake.h"
#include "samples/sounder_faults.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

struct Receiver {
  double FixSeconds = 1;  // from fix to fix
  double NoFixEvery = 0;  // seconds from one lost fix to the next; 0: the start alone
  double JumpEvery = 0;   // seconds from one false fix to the next; 0: none
};

struct Water {
  double Level = 0;  // metres above 0, in the middle of the tide
  double Tide = 0;   // metres from the middle to the highest
};

struct TripPlan {
  const char* File;
  TripForm Form;
  std::int64_t Start;  // seconds since 1970 UTC
  WayPlan Way;
  Receiver Fixes;
  Water Level;
  SounderFaults Sounder;
};

constexpr double TidePeriod = 6.2 * 3600;  // seconds

// Ways: angle, spacing, off the shore, length, speed, radius of turns, seconds between soundings, shift.
// clang-format off
constexpr TripPlan Plans[] = {
    {"skiff-20210612", TripForm::Sl2, 1'623'488'400,
     {90, 70, 25, 1e9, 3.5, 9, 0.25, 30}, {1}, {0, 0}, {0, 6, 1500}},
    {"punt-20210703.sl3", TripForm::Sl3, 1'625'301'000,
     {0, 110, 20, 6000, 1.3, 5, 0.25, 0}, {1}, {0.22, 0}, {0, 8, 700}},
    {"yacht-20210815.log", TripForm::NmeaLog, 1'629'014'400,
     {50, 120, 30, 1e9, 2.4, 10, 0.5, 0}, {1, 1500, 2100}, {0.05, 0.3}, {0, 8, 1200}},
    {"float-20210904.csv", TripForm::AppTable, 1'630'746'000,
     {8, 130, 15, 3500, 1.1, 4, 0.125, 55}, {2.5}, {-0.18, 0}, {0.5, 8, 600}},
    {"launch-20220521.csv", TripForm::FeetTable, 1'653'117'300,
     {135, 100, 25, 1e9, 2.8, 9, 1, 50}, {1, 0, 1700}, {0.41, 0}, {0, 6, 1500}},
    {"kayak-20220618.gpx", TripForm::Gpx, 1'655'540'100,
     {0, 0, 22, 1e9, 1.5, 5, 2, 0}, {2}, {0.12, 0}, {0.4, 8, 1500}},
    {"dory-20200919.csv", TripForm::ConverterTable, 1'600'509'600,
     {20, 140, 25, 7000, 2.0, 7, 0.25, 20}, {1}, {-0.34, 0}, {0, 5, 1800}},
};
// clang-format on

// About a standard normal number.
double Normal(XorShift& random) { return random.Signed() + random.Signed() + random.Signed(); }

// The error of a fix, which wanders: a Gauss-Markov process of 0.6 m over a minute.
class FixError {
 public:
  void Step(double seconds, XorShift& random) {
    const double kept = std::exp(-seconds / 60);
    const double fresh = 0.6 * std::sqrt(1 - kept * kept);
    x_ = kept * x_ + fresh * Normal(random);
    y_ = kept * y_ + fresh * Normal(random);
  }
  double X() const { return x_; }
  double Y() const { return y_; }

 private:
  double x_ = 0, y_ = 0;
};

double LevelAt(const Water& water, double time) {
  return water.Level + water.Tide * std::sin(2 * Pi * (time / TidePeriod - 0.1));
}

// What the sounder takes for the bottom when nothing fails but that weed may hide it.
void Sound(const TripPlan& plan, TrueSounding& sounding, XorShift& random) {
  const double x = sounding.At.X;
  const double y = sounding.At.Y;
  sounding.Bed = ChartLakeDepth(x, y);
  sounding.Level = LevelAt(plan.Level, sounding.At.Time);
  double depth = sounding.Depth();
  const double weed = ChartLakeWeed(x, y);
  if (weed > 0.3 && std::sin(x / 19 + y / 13) > 0) {
    depth -= weed;
    sounding.What = Trouble::Weed;
  }
  sounding.Told = depth + (0.012 + 0.003 * depth) * Normal(random);
}

// Fixes at their own pace, held in between.
void PlaceFixes(const Receiver& receiver, std::vector<TrueSounding>& soundings, XorShift& random) {
  constexpr double cold = 3, lostSeconds = 14, jumpSeconds = 4;
  FixError error;
  double fixTime = -1, fixX = Nan, fixY = Nan;
  for (TrueSounding& sounding : soundings) {
    const double time = sounding.At.Time;
    const bool isNew = std::floor(time / receiver.FixSeconds) > std::floor(fixTime / receiver.FixSeconds);
    const bool isLost =
        receiver.NoFixEvery > 0 && std::fmod(time, receiver.NoFixEvery) > receiver.NoFixEvery - lostSeconds;
    const bool isOff =
        receiver.JumpEvery > 0 && std::fmod(time, receiver.JumpEvery) > receiver.JumpEvery - jumpSeconds;
    if (isNew) {
      error.Step(time - fixTime, random);
      fixTime = time;
      const bool hasFix = time >= cold && !isLost;
      fixX = hasFix ? sounding.At.X + error.X() + (isOff ? 640 : 0) : Nan;
      fixY = hasFix ? sounding.At.Y + error.Y() - (isOff ? 380 : 0) : Nan;
    }
    sounding.FixX = fixX;
    sounding.FixY = fixY;
    if (std::isnan(fixX)) sounding.What = Trouble::NoFix;
    if (!std::isnan(fixX) && isOff) sounding.What = Trouble::Jump;
  }
}

// A log's depths lie between two fixes of the same line and are as bad as the worse of them.
void SpoilBetweenFixes(std::vector<TrueSounding>& soundings) {
  Trouble next = Trouble::NoFix;  // of the fix behind
  for (std::size_t i = soundings.size(); i > 0; --i) {
    TrueSounding& sounding = soundings[i - 1];
    const bool isFix = std::fmod(sounding.At.Time, 1) == 0;
    const Trouble own = sounding.What;
    if (own != Trouble::NoFix && (next == Trouble::NoFix || next == Trouble::Jump)) sounding.What = next;
    if (isFix) next = sounding.At.BeginsLine ? Trouble::NoFix : own;
  }
}

// The app writes a row without a place for each echo, and repeats it with the place when a fix comes.
void DoubleRows(std::vector<TrueSounding>& soundings) {
  constexpr double farthest = 10;  // seconds between two fixes with places in between
  std::vector<TrueSounding> rows;
  std::vector<std::size_t> fixes;
  double lastX = Nan;
  for (const TrueSounding& sounding : soundings) {
    rows.push_back(sounding);
    rows.back().FixX = rows.back().FixY = Nan;
    if (std::isnan(sounding.FixX) || sounding.FixX == lastX) continue;
    lastX = sounding.FixX;
    rows.push_back(sounding);
    rows.back().At.BeginsLine = false;
    rows.back().What = Trouble::Repeat;
    fixes.push_back(rows.size() - 1);
  }
  std::size_t next = 0;  // the first fix behind a row
  for (std::size_t i = 0; i < rows.size(); ++i) {
    while (next < fixes.size() && fixes[next] <= i) ++next;
    if (!std::isnan(rows[i].FixX)) continue;
    const bool isAt = next < fixes.size() && fixes[next] == i + 1;
    const bool isBetween = next > 0 && next < fixes.size() &&
                           rows[fixes[next]].At.Time - rows[fixes[next - 1]].At.Time <= farthest;
    if (!isAt && !isBetween) rows[i].What = Trouble::NoFix;
  }
  soundings = std::move(rows);
}

// The soundings that the converter writes of a recording.
std::vector<TrueSounding> Converted(const std::vector<TrueSounding>& recorded) {
  std::vector<TrueSounding> rows;
  RecorderPlace last;
  for (const TrueSounding& sounding : recorded) {
    const RecorderPlace place = RecorderPlaceOf(sounding);
    if (std::hypot(place.X - last.X, place.Y - last.Y) <= 1 || sounding.Told == 0) continue;
    last = place;
    rows.push_back(sounding);
  }
  return rows;
}

ChartTrip TripOf(const TripPlan& plan, std::uint32_t seed) {
  XorShift random(seed);
  ChartTrip trip = {plan.File, plan.Form, plan.Start, "", "", {}};
  for (const WayPoint& at : WayOf(plan.Way, random)) {
    trip.Soundings.push_back({.At = at});
    Sound(plan, trip.Soundings.back(), random);
  }
  PlaceFixes(plan.Fixes, trip.Soundings, random);
  if (plan.Form == TripForm::NmeaLog) SpoilBetweenFixes(trip.Soundings);
  FailSounder(plan.Sounder, plan.Way.SecondsBetween, trip.Soundings, random);
  // A track has no points without a place.
  if (plan.Form == TripForm::Gpx) {
    std::erase_if(trip.Soundings, [](const TrueSounding& s) { return std::isnan(s.FixX); });
  }
  if (plan.Form == TripForm::AppTable) DoubleRows(trip.Soundings);
  if (plan.Form == TripForm::ConverterTable) trip.Soundings = Converted(trip.Soundings);
  return trip;
}

// A recording that its recorder wrote in two files, and the converter's table beside the second.
void AddParts(const ChartTrip& whole, std::vector<ChartTrip>& trips) {
  const auto cut = whole.Soundings.begin() + static_cast<std::ptrdiff_t>(whole.Soundings.size() * 11 / 20);
  ChartTrip first = whole;
  first.File += "-1.sl2";
  first.Soundings.assign(whole.Soundings.begin(), cut);

  ChartTrip second = whole;
  second.File += "-2.sl2";
  second.GoesOn = first.File;
  second.Start += static_cast<std::int64_t>(cut->At.Time);
  second.Soundings.assign(cut, whole.Soundings.end());
  for (TrueSounding& sounding : second.Soundings) sounding.At.Time -= std::floor(cut->At.Time);

  ChartTrip copy = second;
  copy.File = whole.File + "-2.csv";
  copy.Form = TripForm::ConverterTable;
  copy.GoesOn.clear();
  copy.Copies = second.File;
  copy.Soundings = Converted(second.Soundings);
  for (TrueSounding& sounding : copy.Soundings) sounding.What = Trouble::Repeat;

  std::ranges::move(std::initializer_list<ChartTrip>{first, second, copy}, std::back_inserter(trips));
}

}  // namespace

std::vector<ChartTrip> ChartTrips(std::uint32_t seed) {
  std::vector<ChartTrip> trips;
  std::uint32_t number = 0;
  for (const TripPlan& plan : Plans) {
    const ChartTrip trip = TripOf(plan, seed * 7919 + ++number * 104'729);
    if (trip.Form == TripForm::Sl2) {
      AddParts(trip, trips);
    } else {
      trips.push_back(trip);
    }
  }
  return trips;
}

RecorderPlace RecorderPlaceOf(const TrueSounding& sounding) {
  constexpr double radius = 6356752.31424518;  // metres, of the recorder's sphere
  if (std::isnan(sounding.FixX)) return {};
  const GlobePlace place = ChartLakeGlobe(sounding.FixX, sounding.FixY);
  return {static_cast<std::int32_t>(std::lround(radius * place.Lon * Pi / 180)),
          static_cast<std::int32_t>(std::lround(radius * std::log(std::tan(Pi / 4 + place.Lat * Pi / 360))))};
}

}  // namespace sondrix
