#include "samples/made_ways.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;

class Boat {
 public:
  Boat(const MadePlan& plan, const MadeShore& shore, XorShift& random)
      : plan_(plan), shore_(shore), random_(random) {}

  bool CanSail(double u, double v) const { return shore_.Off(u, v) > plan_.offShore; }
  double Step() { return plan_.step * (1 + 0.2 * random_.Signed()); }

  void Sound(double u, double v) {
    if (CanSail(u, v)) way_.push_back({u, v});
  }

  // Straight to a place, without a sounding there. The boat sounds on the way.
  void GoTo(const PlanePlace& end) {
    if (way_.empty()) return;
    const PlanePlace start = way_.back();
    const double length = std::hypot(end.X - start.X, end.Y - start.Y);
    for (double at = Step(); at < length - plan_.step / 2; at += Step())
      Sound(start.X + at / length * (end.X - start.X), start.Y + at / length * (end.Y - start.Y));
  }

  void Add(const std::vector<PlanePlace>& line) {
    if (line.empty()) return;
    GoTo(line.front());
    way_.insert(way_.end(), line.begin(), line.end());
  }

  std::vector<PlanePlace> TakeWay() { return std::move(way_); }

 private:
  const MadePlan& plan_;
  const MadeShore& shore_;
  XorShift& random_;
  std::vector<PlanePlace> way_;
};

std::vector<PlanePlace> Lines(const MadePlan& plan, const MadeShore& shore, XorShift& random) {
  Boat boat(plan, shore, random);
  const double east = std::cos(plan.angle * Pi / 180), north = std::sin(plan.angle * Pi / 180);
  const double reach = 1.3 * std::max(shore.halfLength, shore.halfWidth);
  bool isBack = false;
  for (double across = -reach * plan.part + plan.spacing * (random.Signed() + 1) / 2;
       across < reach * plan.part; across += plan.spacing * (1 + 0.06 * random.Signed())) {
    const double longPhase = Pi * random.Signed(), shortPhase = Pi * random.Signed();
    std::vector<PlanePlace> line;
    for (double along = -reach; along < reach; along += boat.Step()) {
      const double q = across + plan.wiggle * (0.7 * std::sin(along / 45 + longPhase) +
                                               0.3 * std::sin(along / 11 + shortPhase));
      const PlanePlace place = {shore.u + along * east - q * north, shore.v + along * north + q * east};
      if (boat.CanSail(place.X, place.Y)) line.push_back(place);
    }
    if (isBack) std::reverse(line.begin(), line.end());
    isBack = !isBack;
    boat.Add(line);
  }
  return boat.TakeWay();
}

// From one place to the next in wide bows; now and then the boat drifts about a place for a while.
std::vector<PlanePlace> Wandering(const MadePlan& plan, const MadeShore& shore, XorShift& random) {
  Boat boat(plan, shore, random);
  const auto draw = [&] {
    PlanePlace place;
    do {
      place = {shore.u + 1.3 * shore.halfLength * random.Signed(),
               shore.v + 1.3 * shore.halfWidth * random.Signed()};
    } while (!boat.CanSail(place.X, place.Y));
    return place;
  };
  PlanePlace at = draw(), aim = draw();
  double course = Pi * random.Signed(), sailed = 0, towards = 0;
  while (sailed < plan.length) {
    boat.Sound(at.X, at.Y);
    const double left = std::hypot(aim.X - at.X, aim.Y - at.Y);
    // A place inside the smallest bow can't be reached.
    if (left < 12 || towards > 4000) {
      if (random.Below(6) == 0) {
        for (int i = 0; i < 120; ++i) boat.Sound(at.X + 3 * random.Signed(), at.Y + 3 * random.Signed());
      }
      aim = draw();
      towards = 0;
    }
    const double step = boat.Step(), most = step / 15;  // bows of 15 m
    const double turn = std::remainder(std::atan2(aim.Y - at.Y, aim.X - at.X) - course, 2 * Pi);
    course += std::clamp(turn, -most, most) + 0.06 * random.Signed();
    at = {at.X + step * std::cos(course), at.Y + step * std::sin(course)};
    sailed += step;
    towards += step;
  }
  return boat.TakeWay();
}

}  // namespace

std::vector<PlanePlace> MadeWay(const MadePlan& plan, const MadeShore& shore, XorShift& random) {
  return plan.spacing > 0 ? Lines(plan, shore, random) : Wandering(plan, shore, random);
}

}  // namespace sondrix
