#include "chart/uncertainty.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace sondrix {
namespace {

constexpr std::size_t FewestLeftOut = 30;
constexpr double SmallestError = 0.01;  // metres: no sounder tells less
// A tile is two line spacings wide, so that some lines cross each.
constexpr double TileSpacings = 2;
// The tiles' own errors count beside so many of the whole water.
constexpr double CommonErrors = 8;
constexpr double MostRoughness = 16;
// Of the errors that are left out so much shall lie within twice the uncertainty, as of a normal
// distribution.
constexpr double ShareWithin = 0.954;

double SquareOf(const LeftOut& one, const MemberWeights& weights) {
  const double error = one.ErrorOf(weights);
  return error * error;
}

}  // namespace

UncertaintyRule::UncertaintyRule(std::span<const LeftOut> leftOut, const MemberWeights& weights,
                                 double spacing, double scatter, double spread)
    : spacing_(spacing), scatter_(scatter) {
  const double least = std::max(SmallestError * SmallestError, scatter * scatter / 4);
  if (leftOut.size() < FewestLeftOut) {
    base_ = least, growth_ = spread * spread, power_ = 2;
    return;
  }
  double best = std::numeric_limits<double>::infinity();
  for (const double power : {1.0, 1.5, 2.0, 3.0, 4.0}) {
    // Least squares of the square errors, each weighted by what it is expected to scatter (Fisher scoring).
    double base = least, growth = 0;
    for (const LeftOut& one : leftOut) growth += SquareOf(one, weights);
    growth /= static_cast<double>(leftOut.size());
    for (int round = 0; round < 8; ++round) {
      double n = 0, x1 = 0, x2 = 0, y0 = 0, y1 = 0;
      for (const LeftOut& one : leftOut) {
        const double x = std::pow(static_cast<double>(one.distance) / spacing, power);
        const double expected = base + growth * x, weight = 1 / (expected * expected);
        const double y = SquareOf(one, weights);
        n += weight, x1 += weight * x, x2 += weight * x * x, y0 += weight * y, y1 += weight * x * y;
      }
      const double determinant = n * x2 - x1 * x1;
      if (!(determinant > 0)) break;
      base = std::max(least, (x2 * y0 - x1 * y1) / determinant);
      growth = std::max(1e-9, (y1 - base * x1) / x2);
    }
    double cost = 0;
    for (const LeftOut& one : leftOut) {
      const double expected = base + growth * std::pow(static_cast<double>(one.distance) / spacing, power);
      cost += std::log(expected) + SquareOf(one, weights) / expected;
    }
    if (cost >= best) continue;
    best = cost;
    base_ = base, growth_ = growth, power_ = power;
  }
  LearnRoughness(leftOut, weights);
  MeetShare(leftOut, weights);
  base_ = std::max(least, base_ - scatter * scatter);
}

double UncertaintyRule::Square(double distance) const {
  return base_ + growth_ * std::pow(distance / spacing_, power_);
}

void UncertaintyRule::LearnRoughness(std::span<const LeftOut> leftOut, const MemberWeights& weights) {
  const double side = TileSpacings * spacing_;
  double west = leftOut[0].at.x, east = west, south = leftOut[0].at.y, north = south;
  for (const LeftOut& one : leftOut) {
    west = std::min(west, one.at.x), east = std::max(east, one.at.x);
    south = std::min(south, one.at.y), north = std::max(north, one.at.y);
  }
  tiles_ = {west, north, side, static_cast<int>((east - west) / side) + 1,
            static_cast<int>((north - south) / side) + 1};
  std::vector<double> sums(tiles_.CellCount()), counts(tiles_.CellCount());
  for (const LeftOut& one : leftOut) {
    const std::size_t tile = tiles_.IndexOf(static_cast<int>((one.at.x - west) / side),
                                            static_cast<int>((north - one.at.y) / side));
    constexpr double most = 25;  // one spike isn't a rough bed
    sums[tile] += std::min(most, SquareOf(one, weights) / Square(static_cast<double>(one.distance)));
    counts[tile] += 1;
  }
  roughness_.resize(tiles_.CellCount());
  for (int row = 0; row < tiles_.rows; ++row) {
    for (int column = 0; column < tiles_.columns; ++column) {
      double sum = CommonErrors, count = CommonErrors;
      for (int r = std::max(0, row - 1); r <= std::min(tiles_.rows - 1, row + 1); ++r) {
        for (int c = std::max(0, column - 1); c <= std::min(tiles_.columns - 1, column + 1); ++c) {
          // The tile itself counts most.
          const double share = (r == row ? 1.0 : 0.5) * (c == column ? 1.0 : 0.5);
          sum += share * sums[tiles_.IndexOf(c, r)], count += share * counts[tiles_.IndexOf(c, r)];
        }
      }
      roughness_[tiles_.IndexOf(column, row)] =
          static_cast<float>(std::clamp(sum / count, 1 / MostRoughness, MostRoughness));
    }
  }
}

double UncertaintyRule::RoughnessAt(const PlanePoint& at) const {
  if (roughness_.empty()) return 1;
  const double x = std::clamp((at.x - tiles_.west) / tiles_.cell - 0.5, 0.0, tiles_.columns - 1.0);
  const double y = std::clamp((tiles_.north - at.y) / tiles_.cell - 0.5, 0.0, tiles_.rows - 1.0);
  const int column = std::min(static_cast<int>(x), std::max(0, tiles_.columns - 2));
  const int row = std::min(static_cast<int>(y), std::max(0, tiles_.rows - 2));
  const int nextColumn = std::min(column + 1, tiles_.columns - 1),
            nextRow = std::min(row + 1, tiles_.rows - 1);
  const double right = x - column, below = y - row;
  const auto value = [&](int c, int r) { return static_cast<double>(roughness_[tiles_.IndexOf(c, r)]); };
  return (1 - below) * ((1 - right) * value(column, row) + right * value(nextColumn, row)) +
         below * ((1 - right) * value(column, nextRow) + right * value(nextColumn, nextRow));
}

void UncertaintyRule::MeetShare(std::span<const LeftOut> leftOut, const MemberWeights& weights) {
  std::vector<double> ratios;
  ratios.reserve(leftOut.size());
  for (const LeftOut& one : leftOut) {
    ratios.push_back(std::abs(one.ErrorOf(weights)) / At(one.at, static_cast<double>(one.distance)));
  }
  const auto at =
      ratios.begin() + static_cast<std::ptrdiff_t>(ShareWithin * static_cast<double>(ratios.size() - 1));
  std::nth_element(ratios.begin(), at, ratios.end());
  scale_ = std::clamp(*at / 2, 0.5, 2.0);
}

double UncertaintyRule::At(const PlanePoint& at, double distance) const {
  return scale_ * std::sqrt(Square(distance) * RoughnessAt(at));
}

}  // namespace sondrix
