#include "chart/cross_validation.h"

#include "chart/distance_field.h"
#include "chart/surroundings.h"
#include "chart/thinning.h"
#include "core/parallel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace sondrix {

// From stiff to slack, and one that takes the soundings' scatter for what it is.
const Members ModelMembers = {{
    {0.045, std::numeric_limits<double>::infinity()},
    {0.045, 2.0},
    {0.045, 0.5},
    {0.15, std::numeric_limits<double>::infinity()},
}};

namespace {

// Of the grid on which lines are left out, to a line spacing: a coarser one tells the same of the members.
constexpr double CellsOfSpacing = 5;
constexpr double LongestStretch = 1.5;  // line spacings
constexpr std::uint32_t Turns = 4;
// Of the squares that are left out; each fourth is.
constexpr double AwaySpacings = 4;
// On larger waters fewer turns are taken: there are soundings enough.
constexpr double MostNodes = 600'000;

// Neighbouring stretches and neighbouring lines are left out in different turns.
std::vector<std::uint32_t> TurnsOf(const TrackLines& lines, const TrackLines& stretches) {
  std::vector<std::uint32_t> turns(stretches.count);
  std::uint32_t place = 0;
  for (std::size_t i = 0; i < stretches.lineOf.size(); ++i) {
    const bool isNewLine = i == 0 || lines.lineOf[i] != lines.lineOf[i - 1];
    if (!isNewLine && stretches.lineOf[i] == stretches.lineOf[i - 1]) continue;
    place = isNewLine ? 0 : place + 1;
    turns[stretches.lineOf[i]] = (lines.lineOf[i] + place) % Turns;
  }
  return turns;
}

GridShape ShapeAround(std::span<const PlaneSounding> soundings, double cell, double margin) {
  double west = soundings[0].x, east = west, south = soundings[0].y, north = south;
  for (const PlaneSounding& one : soundings) {
    west = std::min(west, one.x), east = std::max(east, one.x);
    south = std::min(south, one.y), north = std::max(north, one.y);
  }
  GridShape shape = {west - margin, north + margin, cell, 0, 0};
  shape.columns = static_cast<int>((east - west + 2 * margin) / cell) + 2;
  shape.rows = static_cast<int>((north - south + 2 * margin) / cell) + 2;
  return shape;
}

// Bilinear between four nodes.
template <typename Values>
float ValueAt(const Values& values, int columns, int rows, const GridPoint& at) {
  const int column = std::clamp(static_cast<int>(at.x), 0, columns - 2);
  const int row = std::clamp(static_cast<int>(at.y), 0, rows - 2);
  const float right = at.x - static_cast<float>(column), below = at.y - static_cast<float>(row);
  const auto k =
      static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(column);
  const std::size_t next = k + static_cast<std::size_t>(columns);
  return (1 - below) * ((1 - right) * values[k] + right * values[k + 1]) +
         below * ((1 - right) * values[next] + right * values[next + 1]);
}

}  // namespace

SplineShape ShapeOf(const ModelMember& member, double spacing, double cell) {
  // A line has two points a cell after thinning, so that the points' density is 2 / (cell spacing). The
  // spline takes it as one a node.
  const double density = 2 * cell / spacing;
  const double smoothing = member.smoothing * spacing / cell * std::pow(density, 0.25);
  constexpr double least = 0.25;  // below that the points' own pull is lost to rounding
  return {std::max(least, smoothing), member.tensionLength * spacing / cell};
}

std::vector<LeftOut> LeaveLinesOut(std::span<const PlaneSounding> soundings, const TrackLines& lines,
                                   double spacing, const Members& members, double reach, int threads,
                                   const std::function<bool()>& isToEnd) {
  double cell = spacing / CellsOfSpacing;
  GridShape shape = ShapeAround(soundings, cell, spacing);
  const double nodes = static_cast<double>(shape.columns) * static_cast<double>(shape.rows);
  const auto turns =
      static_cast<std::uint32_t>(std::clamp(MostNodes / nodes, 1.0, static_cast<double>(Turns)));
  if (nodes > MostNodes * 4) {
    cell *= std::sqrt(nodes / (MostNodes * 4));
    shape = ShapeAround(soundings, cell, spacing);
  }
  const TrackLines stretches = CutStretches(soundings, lines, LongestStretch * spacing);
  const std::vector<std::uint32_t> turnOf = TurnsOf(lines, stretches);
  const std::vector<ThinnedPoint> thinned = ThinSoundings(soundings, stretches.lineOf, shape);
  std::vector<LeftOut> leftOut;
  const auto isAway = [&](const ThinnedPoint& point) {
    const auto square = static_cast<float>(AwaySpacings * spacing / cell);
    return static_cast<int>(point.at.x / square) % 2 == 1 && static_cast<int>(point.at.y / square) % 2 == 1;
  };
  for (std::uint32_t turn = 0; turn <= turns; ++turn) {
    const auto isLeftOut = [&](const ThinnedPoint& point) {
      return turn == turns ? isAway(point) : turnOf[point.line] == turn;
    };
    std::vector<GridPoint> kept;
    std::vector<std::uint8_t> marked(shape.CellCount());
    for (const ThinnedPoint& point : thinned) {
      if (isLeftOut(point)) continue;
      kept.push_back(point.at);
      marked[shape.IndexOf(static_cast<int>(point.at.x + 0.5F), static_cast<int>(point.at.y + 0.5F))] = 1;
    }
    if (kept.empty()) continue;
    const std::vector<float> distance = DistanceField(shape.columns, shape.rows, marked, threads);
    const int around = static_cast<int>(SurroundingSpacings * spacing / cell);
    const std::vector<float> off = OffMiddle(shape.columns, shape.rows, marked, around, threads);
    const std::size_t first = leftOut.size();
    std::vector<GridPoint> wanted;
    for (const ThinnedPoint& point : thinned) {
      if (!isLeftOut(point)) continue;
      const auto way = static_cast<double>(ValueAt(distance, shape.columns, shape.rows, point.at)) * cell;
      if (way > reach) continue;
      wanted.push_back(point.at);
      leftOut.push_back(
          {{shape.west + (static_cast<double>(point.at.x) + 0.5) * cell,
            shape.north - (static_cast<double>(point.at.y) + 0.5) * cell},
           static_cast<float>(way),
           static_cast<float>(static_cast<double>(ValueAt(off, shape.columns, shape.rows, point.at)) * cell),
           turn == turns});
    }
    std::vector<float> domain(distance.size());
    for (std::size_t k = 0; k < domain.size(); ++k) {
      domain[k] = static_cast<double>(distance[k]) * cell <= reach + 3 * cell ? 1.0F : 0.0F;
    }
    const auto predict = [&](std::size_t m) {
      const std::vector<float> surface = SplineSurface(shape.columns, shape.rows, domain, kept,
                                                       ShapeOf(members[m], spacing, cell), 1, isToEnd);
      for (std::size_t i = 0; i < wanted.size(); ++i) {
        leftOut[first + i].error[m] =
            ValueAt(surface, shape.columns, shape.rows, wanted[i]) - wanted[i].depth;
      }
    };
    InParallel(MemberCount, threads, [&] { return predict; });
  }
  return leftOut;
}

MemberWeights StackMembers(std::span<const LeftOut> leftOut) {
  MemberWeights weights{};
  weights[0] = 1;
  constexpr std::size_t others = MemberCount - 1;
  if (leftOut.size() < 10 * MemberCount) return weights;
  // The first has 1 less the others' weights: the others' differences from it explain its error.
  std::array<std::array<double, MemberCount>, MemberCount> product{};
  std::array<double, MemberCount> right{};
  double square = 0;
  for (const LeftOut& one : leftOut) {
    if (one.isAway) continue;
    const auto base = static_cast<double>(one.error[0]);
    square += base * base;
    for (std::size_t i = 0; i < others; ++i) {
      const double di = static_cast<double>(one.error[i + 1]) - base;
      right[i] -= di * base;
      for (std::size_t j = 0; j < others; ++j) {
        product[i][j] += di * (static_cast<double>(one.error[j + 1]) - base);
      }
    }
  }
  // A weight has to earn itself: a thousandth of the square error for a weight of 1 (ridge regression, Hoerl
  // and Kennard, 1970).
  for (std::size_t i = 0; i < others; ++i) product[i][i] += 1e-3 * square + 1e-12;
  for (std::size_t i = 0; i < others; ++i) {
    for (std::size_t j = i + 1; j < others; ++j) {
      const double share = product[j][i] / product[i][i];
      for (std::size_t k = i; k < others; ++k) product[j][k] -= share * product[i][k];
      right[j] -= share * right[i];
    }
  }
  for (std::size_t i = others; i-- > 0;) {
    for (std::size_t j = i + 1; j < others; ++j) right[i] -= product[i][j] * right[j];
    right[i] /= product[i][i];
    weights[i + 1] = right[i];
    weights[0] -= right[i];
  }
  return weights;
}

}  // namespace sondrix
