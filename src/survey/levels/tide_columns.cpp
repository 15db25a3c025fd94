#include "survey/levels/tide_columns.h"

#include "survey/levels/levels.h"
#include "survey/levels/normal_matrix.h"

#include <Eigen/Cholesky>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sondrix {
namespace {

constexpr double AnyLevel = 100;  // metres: constants of groups are anything

}  // namespace

TideColumns::TideColumns(std::span<const TideSpeed> speeds, const TripGroups& groups,
                         std::span<const FitCrossing> crossings)
    : speeds_(speeds.begin(), speeds.end()), groups_(groups), columnOfTrip_(groups.size()) {
  groupCount_ = *std::max_element(groups.begin(), groups.end()) + 1;
  constants_ = TideCount();
  weather_ = constants_ + (groupCount_ > 1 ? groupCount_ : 0);
  std::vector<bool> crosses(groups.size());
  for (const FitCrossing& crossing : crossings) crosses[crossing.a] = crosses[crossing.b] = true;
  const auto trips = static_cast<std::size_t>(std::count(crosses.begin(), crosses.end(), true));
  count_ = weather_ + (trips <= MaxTrips ? trips : 0);
  auto next = static_cast<std::uint32_t>(weather_);
  for (std::size_t t = 0; t < groups.size(); ++t) {
    columnOfTrip_[t] = crosses[t] && trips <= MaxTrips ? next++ : static_cast<std::uint32_t>(count_);
  }
}

double TideColumns::ConstantOf(std::uint32_t group, std::span<const double> unknowns) const {
  return groupCount_ > 1 ? unknowns[constants_ + group] : 0;
}

void TideColumns::AddSide(std::uint32_t trip, double time, double sign, std::vector<FitTerm>& terms) const {
  const double hours = (time - TideEpoch) / 3600;
  for (std::size_t s = 0; s < speeds_.size(); ++s) {
    const double angle = speeds_[s].speed * hours / 180 * std::numbers::pi;
    const auto column = static_cast<std::uint32_t>(ColumnOf(s));
    terms.push_back({column, sign * std::cos(angle)});
    terms.push_back({column + 1, sign * std::sin(angle)});
  }
  if (groupCount_ > 1) terms.push_back({static_cast<std::uint32_t>(constants_) + groups_[trip], sign});
  if (columnOfTrip_[trip] < count_) terms.push_back({columnOfTrip_[trip], sign});
}

FitRows TideColumns::Rows(std::span<const FitCrossing> crossings) const {
  FitRows rows;
  std::vector<FitTerm> terms;
  for (const FitCrossing& crossing : crossings) {
    terms.clear();
    AddSide(crossing.a, crossing.timeA, 1, terms);
    AddSide(crossing.b, crossing.timeB, -1, terms);
    rows.Add(terms, crossing.difference, crossing.error, crossing.pair);
  }
  return rows;
}

FitRows TideColumns::Beliefs(const TideBelief& belief) const {
  FitRows beliefs;
  const auto add = [&](std::size_t column, double error) {
    beliefs.Add(std::array{FitTerm{static_cast<std::uint32_t>(column), 1}}, 0, error);
  };
  for (std::size_t s = 0; s < speeds_.size(); ++s) {
    const double size = belief.size * speeds_[s].size * (speeds_[s].isDaily ? belief.daily : 1);
    add(ColumnOf(s), size);
    add(ColumnOf(s) + 1, size);
  }
  for (std::size_t c = constants_; c < weather_; ++c) add(c, AnyLevel);
  for (std::size_t c = weather_; c < count_; ++c) add(c, belief.weather);
  return beliefs;
}

std::vector<double> TideColumns::UncertainParts(std::span<const FitCrossing> crossings,
                                                std::span<const double> weights,
                                                const TideBelief& belief) const {
  const FitRows rows = Rows(crossings), beliefs = Beliefs(belief);
  NormalMatrix normal(count_);
  for (std::size_t r = 0; r < rows.size(); ++r) normal.Add(rows, r, weights[r]);
  normal.Add(beliefs);
  const Eigen::LLT<Eigen::MatrixXd> solver(normal.Whole());
  std::vector<double> parts;
  for (std::size_t s = 0; s < speeds_.size(); ++s) {
    double part = 0;
    for (const std::size_t column : {ColumnOf(s), ColumnOf(s) + 1}) {
      const auto index = static_cast<Eigen::Index>(column);
      const Eigen::VectorXd unit = Eigen::VectorXd::Unit(static_cast<Eigen::Index>(count_), index);
      const double error = beliefs.Error(column);  // beliefs begin with the tide, a row a column
      part += solver.solve(unit)[index] / (error * error) / 2;
    }
    parts.push_back(part);
  }
  return parts;
}

}  // namespace sondrix
