#include "chart/model_choice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace sondrix {
namespace {

// A member with less weight than that changes nothing that can be seen.
constexpr double LeastWeight = 0.01;
constexpr std::size_t UsersMember = MemberCount - 1;

// 0 is a plate, 1 a skin; at a half both share at the length of a line spacing.
double TensionLengthOf(double tension) {
  if (tension <= 0) return std::numeric_limits<double>::infinity();
  return std::sqrt((1 - tension) / tension);
}

std::string Shown(const char* form, double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), form, value);
  return text.data();
}

std::string WordsOf(const ModelMember& member) {
  const std::string kind = std::isinf(member.tensionLength)
                               ? std::string("plate")
                               : "tension at " + Shown("%g", member.tensionLength) + " line spacings";
  return member.smoothing > ModelMembers[0].smoothing ? "smoothed " + kind : kind;
}

std::size_t HeaviestOf(const MemberWeights& weights) {
  return static_cast<std::size_t>(std::max_element(weights.begin(), weights.end()) - weights.begin());
}

MemberWeights BestAlone(std::span<const LeftOut> leftOut) {
  MemberWeights best{};
  best[0] = 1;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t m = 0; m < MemberCount; ++m) {
    MemberWeights alone{};
    alone[m] = 1;
    if (const double error = ErrorOf(leftOut, alone); error < least) least = error, best = alone;
  }
  return best;
}

MemberWeights WeightsOf(std::span<const LeftOut> leftOut, ModelMethod method) {
  MemberWeights weights = method == ModelMethod::Spline ? BestAlone(leftOut) : StackMembers(leftOut);
  // What is left out goes to the one that counts most, so that the sum stays 1.
  double& heaviest = weights[HeaviestOf(weights)];
  for (double& weight : weights) {
    if (std::abs(weight) >= LeastWeight) continue;
    heaviest += weight;
    weight = 0;
  }
  return weights;
}

std::string WordsOf(const MemberWeights& weights) {
  std::string members;
  for (std::size_t m = 0; m < MemberCount; ++m) {
    if (weights[m] == 0) continue;
    members += (members.empty() ? "" : ", ") + Shown("%.2f ", weights[m]) + WordsOf(ModelMembers[m]);
  }
  return members;
}

}  // namespace

Members MembersToTry(std::optional<double> tension) {
  Members members = ModelMembers;
  if (tension) members[UsersMember] = {ModelMembers[0].smoothing, TensionLengthOf(*tension)};
  return members;
}

Mixture ChooseMixture(std::span<const LeftOut> leftOut, ModelMethod method, std::optional<double> tension) {
  Mixture mixture;
  if (tension) {
    mixture.weights[UsersMember] = 1;
    mixture.method = mixture.members = "spline of tension " + Shown("%g", *tension);
  } else {
    mixture.weights = WeightsOf(leftOut, method);
    mixture.members = WordsOf(mixture.weights);
    const auto without = std::count(mixture.weights.begin(), mixture.weights.end(), 0.0);
    const int splines = static_cast<int>(MemberCount) - static_cast<int>(without);
    mixture.method = splines == 1
                         ? "one spline: " + WordsOf(ModelMembers[HeaviestOf(mixture.weights)])
                         : "mean of " + std::to_string(splines) + " splines, weighted for this water";
  }
  const Members members = MembersToTry(tension);
  for (std::size_t m = 0; m < MemberCount; ++m) {
    const int disagrees = m == 0 ? 1 : m == SlackMember ? -1 : 0;
    if (mixture.weights[m] != 0 || disagrees != 0) {
      mixture.surfaces.push_back({members[m], mixture.weights[m], disagrees});
    }
  }
  return mixture;
}

double ErrorOf(std::span<const LeftOut> leftOut, const MemberWeights& weights) {
  double squares = 0, count = 0;
  for (const LeftOut& one : leftOut) {
    if (!one.isAway) squares += std::pow(one.ErrorOf(weights), 2), count += 1;
  }
  return count == 0 ? std::nan("") : std::sqrt(squares / count);
}

}  // namespace sondrix
