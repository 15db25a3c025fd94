#pragma once

#include "chart/depth_model.h"
#include "chart/spline_surface.h"
#include "chart/track_lines.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace sondrix {

// The surfaces of which the depth model is a weighted mean; lengths in line spacings.
struct ModelMember {
  double smoothing = 0, tensionLength = 0;  // of SplineShape
};
inline constexpr std::size_t MemberCount = 4;
inline constexpr std::size_t SlackMember = 2;
using MemberWeights = std::array<double, MemberCount>;
using Members = std::array<ModelMember, MemberCount>;
// The first is a plate, SlackMember the slackest.
extern const Members ModelMembers;

// In the nodes of a grid with such cells.
SplineShape ShapeOf(const ModelMember& member, double spacing, double cell);

// A sounding that was left out and predicted from the others.
struct LeftOut {
  PlanePoint at;
  float distance = 0;                      // to the nearest sounding not left out, metres
  float offMiddle = 0;                     // of the soundings around it that aren't left out, metres
  bool isAway = false;                     // beyond the others, as what lies beyond the last line is
  std::array<float, MemberCount> error{};  // of each surface, metres; deeper than the sounding is positive

  // How far the plate and the slackest surface are from each other, metres.
  double Disagreement() const { return std::abs(static_cast<double>(error[0] - error[SlackMember])); }
  double ErrorOf(const MemberWeights& weights) const {
    double sum = 0;
    for (std::size_t m = 0; m < MemberCount; ++m) sum += weights[m] * static_cast<double>(error[m]);
    return sum;
  }
};

// Within so many line spacings soundings count for offMiddle.
inline constexpr double SurroundingSpacings = 1.5;

// Predicts stretches of the lines from all the others, in turns (cross-validation, Stone, 1974). A stretch is
// one and a half line spacings long: its middle is then about as far from other soundings as that of the
// water between two lines is, while of whole lines the neighbours would be twice as far off. In a turn more
// the soundings of whole squares are left out: they are away from the others.
std::vector<LeftOut> LeaveLinesOut(std::span<const PlaneSounding> soundings, const TrackLines& lines,
                                   double spacing, const Members& members, double reach, int threads,
                                   const std::function<bool()>& isToEnd);

// The weights of the smallest square error; their sum is 1, each may be negative (stacked regressions:
// Breiman, 1996, Machine Learning 24, 49-64). Too few left out: the first has all.
MemberWeights StackMembers(std::span<const LeftOut> leftOut);

}  // namespace sondrix
