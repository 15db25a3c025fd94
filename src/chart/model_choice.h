#pragma once

#include "chart/cross_validation.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

// The members that are tried: the usual ones, or with one of the user's tension, 0 to 1, in the last place.
Members MembersToTry(std::optional<double> tension);

// A surface of the model.
struct MixedSurface {
  ModelMember member;
  double weight = 0;
  // 1 for the plate, -1 for the slackest: by how much they differ tells of the uncertainty; others 0.
  int disagrees = 0;
};

// The surfaces that together are the model. Their weights' sum is 1.
struct Mixture {
  std::vector<MixedSurface> surfaces;
  MemberWeights weights{};      // of the members that were tried
  std::string method, members;  // as in ModelAccount
};

// What predicts the soundings best that were left out; with a tension the user's.
Mixture ChooseMixture(std::span<const LeftOut> leftOut, ModelMethod method, std::optional<double> tension);

// Root mean square of the weighted mean's errors, metres; not a number where nothing was left out.
double ErrorOf(std::span<const LeftOut> leftOut, const MemberWeights& weights);

}  // namespace sondrix
