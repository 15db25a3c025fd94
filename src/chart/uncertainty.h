#pragma once

#include "chart/cross_validation.h"
#include "chart/grid.h"

#include <span>
#include <vector>

namespace sondrix {

// How far the depth model may be off, learnt from the soundings that were left out: the square error is a
// base and a power of the distance to the nearest sounding, and both are larger where the bed is rougher.
class UncertaintyRule {
 public:
  // scatter: of a single sounding, metres; what it adds to the errors isn't the model's. spacing: of the
  // lines, metres. With too few left out the rule is a guess from the spread of the depths, metres.
  UncertaintyRule(std::span<const LeftOut> leftOut, const MemberWeights& weights, double spacing,
                  double scatter, double spread);

  // One standard deviation, metres; distance to the nearest sounding in metres.
  double At(const PlanePoint& at, double distance) const;

 private:
  double Square(double distance) const;
  double RoughnessAt(const PlanePoint& at) const;
  void LearnRoughness(std::span<const LeftOut> leftOut, const MemberWeights& weights);
  void MeetShare(std::span<const LeftOut> leftOut, const MemberWeights& weights);

  double spacing_ = 1, scatter_ = 0;
  double base_ = 0, growth_ = 0, power_ = 1;  // metres squared; of the distance in line spacings
  double scale_ = 1;
  GridShape tiles_;
  std::vector<float> roughness_;  // of each tile, a factor to the square
};

}  // namespace sondrix
