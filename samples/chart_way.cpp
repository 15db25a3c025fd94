#include "samples/chart_way.h"

#include "samples/chart_lake.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;

constexpr double Extent = 1300;  // metres from the middle, beyond all shores
constexpr double MarkStep = 30;  // metres between the marks that a boat steers to
constexpr double ShortestRun = 60;
constexpr double LeastWater = 10;  // metres off the shore, on the way from lane to lane

// Marks that a boat passes without a break.
using Leg = std::vector<PlanePlace>;

double Distance(const PlanePlace& a, const PlanePlace& b) { return std::hypot(a.X - b.X, a.Y - b.Y); }

PlanePlace Between(const PlanePlace& a, const PlanePlace& b, double part) {
  return {a.X + part * (b.X - a.X), a.Y + part * (b.Y - a.Y)};
}

bool IsFree(const PlanePlace& a, const PlanePlace& b) {
  const int steps = 1 + static_cast<int>(Distance(a, b) / 5);
  for (int i = 0; i <= steps; ++i) {
    const PlanePlace at = Between(a, b, static_cast<double>(i) / steps);
    if (ChartLakeOffShore(at.X, at.Y) < LeastWater) return false;
  }
  return true;
}

// The wet parts of a lane, each as its two ends.
std::vector<Leg> RunsOf(const PlanePlace& from, const PlanePlace& to, double offShore) {
  constexpr double step = 5;
  std::vector<Leg> runs;
  const int steps = static_cast<int>(Distance(from, to) / step);
  bool isOpen = false;
  for (int i = 0; i <= steps; ++i) {
    const PlanePlace at = Between(from, to, static_cast<double>(i) / steps);
    const bool isWet = ChartLakeOffShore(at.X, at.Y) >= offShore;
    if (isWet && !isOpen) runs.push_back({at, at});
    if (isWet) runs.back()[1] = at;
    isOpen = isWet;
  }
  std::erase_if(runs, [](const Leg& run) { return Distance(run[0], run[1]) < ShortestRun; });
  return runs;
}

// Adds marks to the last leg, or begins another where the way there isn't free.
void Append(std::vector<Leg>& legs, const PlanePlace& from, const PlanePlace& to) {
  if (legs.empty() || !IsFree(legs.back().back(), from)) legs.push_back({});
  const int steps = 1 + static_cast<int>(Distance(from, to) / MarkStep);
  for (int i = 0; i <= steps; ++i) {
    legs.back().push_back(Between(from, to, static_cast<double>(i) / steps));
  }
}

std::vector<Leg> LanesOf(const WayPlan& plan) {
  const double east = std::sin(plan.Angle * Pi / 180);
  const double north = std::cos(plan.Angle * Pi / 180);
  std::vector<Leg> legs;
  double length = 0;
  bool isBack = false;
  for (double across = -Extent + plan.ShiftHundredths * plan.Spacing / 100; across < Extent;
       across += plan.Spacing) {
    PlanePlace from = {-Extent * east + across * north, -Extent * north - across * east};
    PlanePlace to = {Extent * east + across * north, Extent * north - across * east};
    if (isBack) std::swap(from, to);
    const std::vector<Leg> runs = RunsOf(from, to, plan.OffShore);
    for (const Leg& run : runs) {
      if (length >= plan.Length) return legs;
      Append(legs, run[0], run[1]);
      length += Distance(run[0], run[1]);
    }
    if (!runs.empty()) isBack = !isBack;
  }
  return legs;
}

// Around the lake, then around each island.
std::vector<Leg> RoundsOf(const WayPlan& plan) {
  std::vector<Leg> legs;
  for (const ShoreRing& ring : ChartLakeShore()) {
    legs.push_back({});
    for (std::size_t i = 0; i < ring.size(); i += 3) {
      // To the left of the ring lies the water.
      const PlanePlace& a = ring[i];
      const PlanePlace& b = ring[(i + 3) % ring.size()];
      const double along = Distance(a, b);
      const PlanePlace mark = {a.X - plan.OffShore * (b.Y - a.Y) / along,
                               a.Y + plan.OffShore * (b.X - a.X) / along};
      if (ChartLakeOffShore(mark.X, mark.Y) >= plan.OffShore / 2) legs.back().push_back(mark);
    }
  }
  return legs;
}

double CourseTo(const PlanePlace& from, const PlanePlace& to) {
  return std::atan2(to.X - from.X, to.Y - from.Y);
}

// Steers along the marks of a leg; time goes on from that of the last point.
void Steer(const WayPlan& plan, const Leg& leg, XorShift& random, std::vector<WayPoint>& way) {
  if (leg.size() < 2) return;
  WayPoint at;
  at.X = leg[0].X;
  at.Y = leg[0].Y;
  at.Course = CourseTo(leg[0], leg[1]);
  at.BeginsLine = true;
  if (!way.empty()) {
    const double apart = Distance({way.back().X, way.back().Y}, leg[0]);
    at.Time = std::ceil(way.back().Time + 60 + 1.5 * apart / plan.Speed);
  }
  double drift = 0;  // of the course, radians
  std::size_t next = 1;
  for (const double step = plan.SecondsBetween;;) {
    const double pace = 0.05 * random.Signed();
    at.Speed += (plan.Speed * (1 + pace) - at.Speed) * std::min(1.0, step / 4);
    if (at.BeginsLine) at.Speed = plan.Speed;
    way.push_back(at);
    at.BeginsLine = false;

    while (next < leg.size() && Distance({at.X, at.Y}, leg[next]) < 1.3 * plan.TurnRadius) ++next;
    if (next == leg.size()) return;
    drift += 0.02 * std::sqrt(step) * random.Signed() - drift * step / 20;
    const double wish = std::remainder(CourseTo({at.X, at.Y}, leg[next]) + drift - at.Course, 2 * Pi);
    const double most = at.Speed * step / plan.TurnRadius;
    const double turn = std::clamp(wish, -most, most);
    const double middle = at.Course + turn / 2;
    at.X += at.Speed * step * std::sin(middle);
    at.Y += at.Speed * step * std::cos(middle);
    at.Course = std::remainder(at.Course + turn, 2 * Pi);
    at.Time += step;
  }
}

}  // namespace

std::vector<WayPoint> WayOf(const WayPlan& plan, XorShift& random) {
  std::vector<WayPoint> way;
  for (const Leg& leg : plan.Spacing > 0 ? LanesOf(plan) : RoundsOf(plan)) Steer(plan, leg, random, way);
  return way;
}

}  // namespace sondrix
