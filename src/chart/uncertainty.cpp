#include "chart/uncertainty.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace sondrix {
namespace {

constexpr std::size_t FewestLeftOut = 30;
// More tell no more.
constexpr std::size_t EnoughLeftOut = 20'000;
constexpr double SmallestError = 0.003;  // metres: sounders tell no less
// A tile is two line spacings wide, so that some lines cross each.
constexpr double TileSpacings = 2;
// The tiles' own errors count beside so many of the whole water.
constexpr double CommonErrors = 8;
constexpr double MostRoughness = 16;
// Of the errors that are left out so much shall lie within twice the uncertainty, as of a normal
// distribution.
constexpr double ShareWithin = 0.954;

// Least squares of three terms that may not be negative, from the products of the terms with each other and
// with what they shall be: one after the other, until nothing moves (Gauss-Seidel, projected).
using Triple = std::array<double, 3>;
Triple PositiveLeastSquares(const std::array<Triple, 3>& products, const Triple& right, Triple start) {
  for (int round = 0; round < 100; ++round) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (!(products[i][i] > 0)) continue;
      double rest = right[i];
      for (std::size_t j = 0; j < 3; ++j) rest -= j == i ? 0 : products[i][j] * start[j];
      start[i] = std::max(0.0, rest / products[i][i]);
    }
  }
  return start;
}

}  // namespace

UncertaintyRule::UncertaintyRule(std::span<const LeftOut> leftOut, const MemberWeights& weights,
                                 double spacing, double scatter, double spread)
    : spacing_(spacing) {
  const double least = std::max(SmallestError * SmallestError, scatter * scatter / 4);
  if (leftOut.size() < FewestLeftOut) {
    terms_ = {least, spread * spread, 0, 2, 1};
    return;
  }
  std::vector<PlaceKnown> places;
  std::vector<double> squares;
  const std::size_t stride = std::max<std::size_t>(1, leftOut.size() / EnoughLeftOut);
  for (std::size_t i = 0; i < leftOut.size(); i += stride) {
    const LeftOut& one = leftOut[i];
    places.push_back(
        {one.at, static_cast<double>(one.distance), static_cast<double>(one.offMiddle), one.Disagreement()});
    squares.push_back(std::pow(one.ErrorOf(weights), 2));
  }
  Fit(places, squares, least);
  LearnRoughness(places, squares);
  MeetShare(places, squares);
  terms_.base = std::max(least, terms_.base - scatter * scatter);
}

double UncertaintyRule::Reckoned(const PlaceKnown& place, const Terms& terms) const {
  return std::pow(place.distance / spacing_ * (1 + terms.onesided * place.offMiddle / spacing_), terms.power);
}

double UncertaintyRule::Square(const PlaceKnown& place, const Terms& terms) const {
  return terms.base + terms.growth * Reckoned(place, terms) +
         terms.share * place.disagreement * place.disagreement;
}

void UncertaintyRule::Fit(std::span<const PlaceKnown> places, std::span<const double> squares, double least) {
  double mean = 0;
  for (const double square : squares) mean += square / static_cast<double>(squares.size());
  double best = std::numeric_limits<double>::infinity();
  std::vector<double> reckoned(places.size());
  for (const double power : {1.0, 1.5, 2.0, 3.0, 4.0}) {
    for (const double onesided : {0.5, 1.0, 2.0, 4.0}) {
      Terms terms = {least, mean, 0, power, onesided};
      for (std::size_t i = 0; i < places.size(); ++i) reckoned[i] = Reckoned(places[i], terms);
      const auto expectedAt = [&](std::size_t i) {
        return terms.base + terms.growth * reckoned[i] + terms.share * std::pow(places[i].disagreement, 2);
      };
      // Each square is weighted by what it is expected to scatter (Fisher scoring).
      for (int round = 0; round < 6; ++round) {
        std::array<Triple, 3> products{};
        Triple right{};
        for (std::size_t i = 0; i < places.size(); ++i) {
          const double expected = expectedAt(i), weight = 1 / (expected * expected);
          const Triple term = {1, reckoned[i], std::pow(places[i].disagreement, 2)};
          for (std::size_t a = 0; a < 3; ++a) {
            right[a] += weight * term[a] * squares[i];
            for (std::size_t b = 0; b < 3; ++b) products[a][b] += weight * term[a] * term[b];
          }
        }
        const Triple solved = PositiveLeastSquares(products, right, {terms.base, terms.growth, terms.share});
        terms.base = std::max(least, solved[0]), terms.growth = solved[1], terms.share = solved[2];
      }
      double cost = 0;
      for (std::size_t i = 0; i < places.size(); ++i) {
        const double expected = expectedAt(i);
        cost += std::log(expected) + squares[i] / expected;
      }
      if (cost < best) best = cost, terms_ = terms;
    }
  }
}

void UncertaintyRule::LearnRoughness(std::span<const PlaceKnown> places, std::span<const double> squares) {
  const double side = TileSpacings * spacing_;
  double west = places[0].at.x, east = west, south = places[0].at.y, north = south;
  for (const PlaceKnown& one : places) {
    west = std::min(west, one.at.x), east = std::max(east, one.at.x);
    south = std::min(south, one.at.y), north = std::max(north, one.at.y);
  }
  tiles_ = {west, north, side, static_cast<int>((east - west) / side) + 1,
            static_cast<int>((north - south) / side) + 1};
  std::vector<double> sums(tiles_.CellCount()), counts(tiles_.CellCount());
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::size_t tile = tiles_.IndexOf(static_cast<int>((places[i].at.x - west) / side),
                                            static_cast<int>((north - places[i].at.y) / side));
    constexpr double most = 25;  // one spike isn't a rough bed
    sums[tile] += std::min(most, squares[i] / Square(places[i], terms_));
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

void UncertaintyRule::MeetShare(std::span<const PlaceKnown> places, std::span<const double> squares) {
  std::vector<double> ratios;
  ratios.reserve(places.size());
  for (std::size_t i = 0; i < places.size(); ++i) ratios.push_back(std::sqrt(squares[i]) / At(places[i]));
  const auto at =
      ratios.begin() + static_cast<std::ptrdiff_t>(ShareWithin * static_cast<double>(ratios.size() - 1));
  std::nth_element(ratios.begin(), at, ratios.end());
  scale_ = std::clamp(*at / 2, 0.5, 2.0);
}

double UncertaintyRule::At(const PlaceKnown& place) const {
  return scale_ * std::sqrt(Square(place, terms_) * RoughnessAt(place.at));
}

}  // namespace sondrix
