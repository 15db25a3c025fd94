#pragma once

#include "chart/cross_validation.h"
#include "chart/grid.h"

#include <span>
#include <vector>

namespace sondrix {

// What is known of a place before its depth is.
struct PlaceKnown {
  PlanePoint at;
  double distance = 0;      // to the nearest sounding, metres
  double offMiddle = 0;     // of the soundings around, metres
  double disagreement = 0;  // of the plate and the slackest surface, metres
};

// How far the depth model may be off, learnt from the soundings that were left out: the square error is a
// base, a power of the distance to the nearest sounding, which counts for more where all soundings lie on one
// side, and a share of what the surfaces disagree by. All of it is larger where the bed is rougher.
class UncertaintyRule {
 public:
  // scatter: of a single sounding, metres; what it adds to the errors isn't the model's. spacing: of the
  // lines, metres. With too few left out the rule is a guess from the spread of the depths, metres.
  UncertaintyRule(std::span<const LeftOut> leftOut, const MemberWeights& weights, double spacing,
                  double scatter, double spread);

  // One standard deviation, metres.
  double At(const PlaceKnown& place) const;

 private:
  struct Terms {
    double base = 0, growth = 0,
           share = 0;  // metres squared; of the reckoned distance; of the disagreement's square
    double power = 1, onesided = 0;
  };
  double Reckoned(const PlaceKnown& place, const Terms& terms) const;
  double Square(const PlaceKnown& place, const Terms& terms) const;
  double RoughnessAt(const PlanePoint& at) const;
  void Fit(std::span<const PlaceKnown> places, std::span<const double> squares, double least);
  void LearnRoughness(std::span<const PlaceKnown> places, std::span<const double> squares);
  void MeetShare(std::span<const PlaceKnown> places, std::span<const double> squares);

  double spacing_ = 1;
  Terms terms_;
  double scale_ = 1;
  GridShape tiles_;
  std::vector<float> roughness_;  // of each tile, a factor to the square
};

}  // namespace sondrix
