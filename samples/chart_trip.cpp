#include "samples/chart_trip.h"

#include "samples/chart_lake.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

struct TripPlan {
  const char* File;
  TripForm Form;
  std::int64_t Start;  // seconds since 1970 UTC
  WayPlan Way;
  double FixSeconds;   // from fix to fix
  double Level;        // metres above 0, in the middle of the tide
  double Tide;         // metres from the middle to the highest
  double Smallest;     // metres, what a blind sounder tells
  int SpikesPerMille;  // of the soundings
  double LostEvery;    // metres of way from one lost stretch to the next; 0: none
  double NoFixEvery;   // seconds from one lost fix to the next; 0: the start alone
  double JumpEvery;    // seconds from one false fix to the next; 0: none
};

constexpr double Hour = 3600;
constexpr double TidePeriod = 6.2 * Hour;

constexpr TripPlan Plans[] = {
    // File, form, start, way {angle, spacing, off, length, speed, radius, seconds, shift}, ...
    {"skiff-20210612",
     TripForm::Sl2,
     1'623'488'400,
     {90, 70, 25, 1e9, 3.5, 9, 0.25, 30},
     1,
     0.00,
     0,
     0,
     6,
     1500,
     0,
     0},
    {"punt-20210703.sl3",
     TripForm::Sl3,
     1'625'301'000,
     {0, 110, 20, 6000, 1.3, 5, 0.25, 0},
     1,
     0.22,
     0,
     0,
     8,
     700,
     0,
     0},
    {"yacht-20210815.log",
     TripForm::NmeaLog,
     1'629'014'400,
     {50, 120, 30, 1e9, 2.4, 10, 0.5, 0},
     1,
     0.05,
     0.3,
     0,
     8,
     1200,
     1500,
     2100},
    {"float-20210904.csv",
     TripForm::AppTable,
     1'630'746'000,
     {8, 130, 15, 3500, 1.1, 4, 0.125, 55},
     2.5,
     -0.18,
     0,
     0.5,
     8,
     600,
     0,
     0},
    {"launch-20220521.csv",
     TripForm::FeetTable,
     1'653'117'300,
     {135, 100, 25, 1e9, 2.8, 9, 1, 50},
     1,
     0.41,
     0,
     0,
     6,
     1500,
     0,
     1700},
    {"kayak-20220618.gpx",
     TripForm::Gpx,
     1'655'540'100,
     {0, 0, 22, 1e9, 1.5, 5, 2, 0},
     2,
     0.12,
     0,
     0.4,
     8,
     1500,
     0,
     0},
    {"dory-20200919.csv",
     TripForm::ConverterTable,
     1'600'509'600,
     {20, 140, 25, 7000, 2.0, 7, 0.25, 20},
     1,
     -0.34,
     0,
     0,
     5,
     1800,
     0,
     0},
};

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

double LevelAt(const TripPlan& plan, double time) {
  return plan.Level + plan.Tide * std::sin(2 * Pi * (time / TidePeriod - 0.1));
}

// What the sounder takes for the bottom when nothing fails but that weed may hide it.
void Sound(const TripPlan& plan, TrueSounding& sounding, XorShift& random) {
  const double x = sounding.At.X;
  const double y = sounding.At.Y;
  sounding.Bed = ChartLakeDepth(x, y);
  sounding.Level = LevelAt(plan, sounding.At.Time);
  double depth = sounding.Depth();
  const double weed = ChartLakeWeed(x, y);
  if (weed > 0.3 && std::sin(x / 19 + y / 13) > 0) {
    depth -= weed;
    sounding.What = Trouble::Weed;
  }
  sounding.Told = depth + (0.012 + 0.003 * depth) * Normal(random);
}

// Fixes at their own pace, held in between.
void PlaceFixes(const TripPlan& plan, std::vector<TrueSounding>& soundings, XorShift& random) {
  constexpr double cold = 3, lostSeconds = 14, jumpSeconds = 4;
  FixError error;
  double fixTime = -1, fixX = Nan, fixY = Nan;
  for (TrueSounding& sounding : soundings) {
    const double time = sounding.At.Time;
    const bool isNew = std::floor(time / plan.FixSeconds) > std::floor(fixTime / plan.FixSeconds);
    const bool isLost =
        plan.NoFixEvery > 0 && std::fmod(time, plan.NoFixEvery) > plan.NoFixEvery - lostSeconds;
    const bool isOff = plan.JumpEvery > 0 && std::fmod(time, plan.JumpEvery) > plan.JumpEvery - jumpSeconds;
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

// A stretch of soundings that fail together.
struct Stretch {
  Trouble What = Trouble::None;
  int Left = 0;
  double Factor = 1, Add = 0;  // of the depth
};

Stretch BeginLost(double depth, XorShift& random) {
  Stretch stretch;
  stretch.What = Trouble::Lost;
  // 5 to 300 soundings, short ones as often as long ones.
  stretch.Left = static_cast<int>(5 * std::pow(60, (random.Signed() + 1) / 2));
  switch (random.Below(3)) {
    case 0:
      stretch.Factor = 0.5;
      break;
    case 1:
      stretch.Factor = 2;
      break;
    default:
      stretch.Add = depth > 9 && random.Below(2) == 0 ? -8 : 8;
  }
  return stretch;
}

double SpikeOf(double depth, XorShift& random) {
  const double off = std::max(1.0, 0.3 * depth) * (1 + (random.Signed() + 1) / 2);
  return random.Below(2) == 0 && depth > off + 0.3 ? depth - off : depth + off;
}

void Fail(const TripPlan& plan, std::vector<TrueSounding>& soundings, XorShift& random) {
  constexpr int soundBetween = 40;  // soundings after a stretch
  Stretch stretch;
  int sound = 0;
  for (TrueSounding& sounding : soundings) {
    ++sound;
    if (sounding.What != Trouble::None && stretch.Left == 0) continue;
    const double way = sounding.At.Speed * plan.Way.SecondsBetween;
    if (stretch.Left == 0 && sound > soundBetween && plan.LostEvery > 0 &&
        random.Signed() + 1 < 2 * way / plan.LostEvery) {
      stretch = BeginLost(sounding.Depth(), random);
      if (random.Below(3) == 0) {
        stretch = {Trouble::Blind, 8 + static_cast<int>(random.Below(60)), 0, plan.Smallest};
      }
    }
    if (stretch.Left > 0) {
      sounding.Told = sounding.Told * stretch.Factor + stretch.Add;
      if (sounding.What == Trouble::None || sounding.What == Trouble::Weed) sounding.What = stretch.What;
      --stretch.Left;
      sound = 0;
    } else if (sound > 3 && random.Below(1000) < static_cast<std::uint32_t>(plan.SpikesPerMille)) {
      sounding.Told = SpikeOf(sounding.Told, random);
      sounding.What = Trouble::Spike;
      sound = 0;
    }
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
  PlaceFixes(plan, trip.Soundings, random);
  Fail(plan, trip.Soundings, random);
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
