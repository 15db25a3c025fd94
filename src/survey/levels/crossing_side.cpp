#include "survey/levels/crossing_side.h"

#include "geo/near_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace sondrix {
namespace {

constexpr double DepthWay = 1.5, SlopeWay = 8;          // metres
constexpr std::size_t MaxOfDepth = 5, MaxOneSide = 24;  // soundings
constexpr double LeastSine = 0.3;                       // of the angle between tracks
constexpr double LeastNoise = 0.01;                     // metres: sounders tell centimetres
// Of the median absolute second difference of independent normal errors: 1.4826 / sqrt(6).
constexpr double NoiseOfMedian = 1.4826 / 2.449489742783178;

// A sounding of the way about another one, metres from it.
struct WayPoint {
  double way = 0, east = 0, north = 0, depth = 0;
};

// The used soundings of a line about one of it within SlopeWay, by their way.
class WayAbout {
 public:
  WayAbout(const SoundingList& soundings, std::uint32_t at) : soundings_(&soundings), at_(at) {
    const Sounding& middle = soundings[at];
    narrowing_ = std::cos(middle.latitude / 180 * std::numbers::pi);
    Walk(-1);
    std::reverse(points_.begin(), points_.end());
    middle_ = points_.size();
    points_.push_back({0, 0, 0, static_cast<double>(middle.depth)});
    Walk(1);
  }

  double Depth() const {
    std::array<double, MaxOfDepth> depths{};
    std::size_t count = 0;
    depths[count++] = points_[middle_].depth;
    for (std::size_t step = 1; step <= MaxOfDepth / 2; ++step) {
      if (middle_ >= step && -points_[middle_ - step].way <= DepthWay) {
        depths[count++] = points_[middle_ - step].depth;
      }
      if (middle_ + step < points_.size() && points_[middle_ + step].way <= DepthWay) {
        depths[count++] = points_[middle_ + step].depth;
      }
    }
    const auto end = depths.begin() + static_cast<std::ptrdiff_t>(count);
    std::make_heap(depths.begin(), end);
    std::sort_heap(depths.begin(), end);
    return (depths[(count - 1) / 2] + depths[count / 2]) / 2;
  }

  double Noise() const {
    std::vector<double> bends;
    for (std::size_t i = 1; i + 1 < points_.size(); ++i) {
      bends.push_back(std::abs(points_[i - 1].depth - 2 * points_[i].depth + points_[i + 1].depth));
    }
    if (bends.empty()) return LeastNoise;
    const auto middle = bends.begin() + static_cast<std::ptrdiff_t>(bends.size() / 2);
    std::nth_element(bends.begin(), middle, bends.end());
    return std::max(LeastNoise, NoiseOfMedian * *middle);
  }

  // Metres a metre along the way; 0 where the boat lay still.
  double Slope() const {
    double ways = 0, depths = 0, square = 0, product = 0;
    for (const WayPoint& point : points_) {
      ways += point.way;
      depths += point.depth;
    }
    const auto count = static_cast<double>(points_.size());
    for (const WayPoint& point : points_) {
      square += (point.way - ways / count) * (point.way - ways / count);
      product += (point.way - ways / count) * (point.depth - depths / count);
    }
    return square > 0 ? product / square : 0;
  }

  // Of length 1, or 0 where the boat lay still.
  std::array<double, 2> Direction() const {
    const double east = points_.back().east - points_.front().east;
    const double north = points_.back().north - points_.front().north;
    const double length = std::hypot(east, north);
    return length > 0 ? std::array{east / length, north / length} : std::array{0.0, 0.0};
  }

 private:
  void Walk(int step) {
    const Sounding& middle = (*soundings_)[at_];
    const Sounding* before = &middle;
    double way = 0;
    const std::size_t most = points_.size() + MaxOneSide;
    // Soundings that aren't used are stepped over, but not for ever.
    constexpr int MaxSteps = 200;
    auto i = static_cast<std::ptrdiff_t>(at_);
    for (int steps = 0; steps < MaxSteps && points_.size() < most; ++steps) {
      if (step < 0 && (*soundings_)[static_cast<std::size_t>(i)].beginsLine) return;
      i += step;
      if (i < 0 || i >= static_cast<std::ptrdiff_t>(soundings_->size())) return;
      const Sounding& sounding = (*soundings_)[static_cast<std::size_t>(i)];
      if (step > 0 && sounding.beginsLine) return;
      if (sounding.fate != Fate::Used) continue;
      way += MetresBetween(before->longitude, before->latitude, sounding.longitude, sounding.latitude);
      if (way > SlopeWay) return;
      before = &sounding;
      const double east = std::remainder(sounding.longitude - middle.longitude, 360.0) * narrowing_;
      points_.push_back({step * way, east * MetresOfDegree,
                         (sounding.latitude - middle.latitude) * MetresOfDegree,
                         static_cast<double>(sounding.depth)});
    }
  }

  const SoundingList* soundings_;
  std::uint32_t at_;
  double narrowing_ = 1;  // of a degree of longitude
  std::vector<WayPoint> points_;
  std::size_t middle_ = 0;
};

// Of the plane whose slopes along two directions are given.
double SlopeOf(const WayAbout& a, const WayAbout& b) {
  const auto one = a.Direction(), other = b.Direction();
  const double sine = one[0] * other[1] - one[1] * other[0];
  const double slopeA = a.Slope(), slopeB = b.Slope();
  if (std::abs(sine) < LeastSine) return std::max(std::abs(slopeA), std::abs(slopeB));
  const double east = (slopeA * other[1] - slopeB * one[1]) / sine;
  const double north = (slopeB * one[0] - slopeA * other[0]) / sine;
  return std::hypot(east, north);
}

CrossingSide SideOf(const Sounding& sounding, SoundingPlace place, const WayAbout& about) {
  return {place.trip, place.at, sounding.time, static_cast<float>(about.Depth()), sounding.recorded};
}

}  // namespace

Crossing CrossingOf(const Survey& survey, SoundingPlace a, SoundingPlace b) {
  const SoundingList &one = survey.trips[a.trip].soundings, &other = survey.trips[b.trip].soundings;
  const WayAbout aboutA(one, a.at), aboutB(other, b.at);
  const Sounding &p = one[a.at], &q = other[b.at];
  Crossing crossing;
  crossing.a = SideOf(p, a, aboutA);
  crossing.b = SideOf(q, b, aboutB);
  crossing.longitude = LongitudeBetween(p.longitude, q.longitude, 0.5);
  crossing.latitude = (p.latitude + q.latitude) / 2;
  crossing.apart = static_cast<float>(MetresBetween(p.longitude, p.latitude, q.longitude, q.latitude));
  crossing.slope = static_cast<float>(SlopeOf(aboutA, aboutB));
  crossing.noise = static_cast<float>(std::hypot(aboutA.Noise(), aboutB.Noise()));
  return crossing;
}

}  // namespace sondrix
