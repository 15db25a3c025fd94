#include "chart/spline_surface.h"

#include "chart/bands.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace sondrix {
namespace {

// The grid with half as many nodes each way: a coarse cell covers two by two fine ones.
struct Level {
  int columns = 0, rows = 0;
  std::vector<float> domain;
  std::vector<GridPoint> points;
};

// No point lies on the last node, so that there are always four around it.
float WithinNodes(float at, int nodes) {
  return std::clamp(at, 0.0F, static_cast<float>(nodes - 1) * (1 - 1e-6F));
}

// Of all points between the same nodes one is made, where they are on average.
void Gather(int columns, int rows, std::vector<GridPoint>& points) {
  for (GridPoint& point : points)
    point.x = WithinNodes(point.x, columns), point.y = WithinNodes(point.y, rows);
  std::vector<std::pair<std::uint32_t, std::uint32_t>> order(points.size());
  for (std::size_t p = 0; p < points.size(); ++p) {
    const auto at = static_cast<std::uint32_t>(points[p].y) * static_cast<std::uint32_t>(columns) +
                    static_cast<std::uint32_t>(points[p].x);
    order[p] = {at, static_cast<std::uint32_t>(p)};
  }
  std::sort(order.begin(), order.end());
  std::vector<GridPoint> gathered;
  gathered.reserve(order.size());
  for (std::size_t i = 0; i < order.size();) {
    double x = 0, y = 0, depth = 0, weight = 0;
    const std::uint32_t at = order[i].first;
    for (; i < order.size() && order[i].first == at; ++i) {
      const GridPoint& point = points[order[i].second];
      const auto share = static_cast<double>(point.weight);
      x += share * point.x, y += share * point.y, depth += share * point.depth, weight += share;
    }
    gathered.push_back({static_cast<float>(x / weight), static_cast<float>(y / weight),
                        static_cast<float>(depth / weight), static_cast<float>(weight)});
  }
  points = std::move(gathered);
}

Level Coarser(const Level& fine) {
  Level coarse;
  coarse.columns = (fine.columns + 1) / 2, coarse.rows = (fine.rows + 1) / 2;
  const auto columns = static_cast<std::size_t>(coarse.columns);
  coarse.domain.assign(columns * static_cast<std::size_t>(coarse.rows), 0.0F);
  for (int row = 0; row < fine.rows; ++row) {
    const float* const from =
        fine.domain.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(fine.columns);
    float* const to = coarse.domain.data() + static_cast<std::size_t>(row / 2) * columns;
    for (int i = 0; i < fine.columns; ++i) to[i / 2] = std::max(to[i / 2], from[i]);
  }
  coarse.points = fine.points;
  for (GridPoint& point : coarse.points) point.x = (point.x - 0.5F) / 2, point.y = (point.y - 0.5F) / 2;
  Gather(coarse.columns, coarse.rows, coarse.points);
  return coarse;
}

// Between the middles of the coarse cells, bilinear; where a coarse node is out of the domain it doesn't
// count.
std::vector<float> Finer(const Level& coarse, const std::vector<float>& u, const Level& fine, int threads) {
  std::vector<float> finer(fine.domain.size());
  InBands(fine.rows, threads, [&](int from, int to) {
    const auto columns = static_cast<std::size_t>(coarse.columns);
    for (int row = from; row < to; ++row) {
      // The nearer coarse row has three quarters.
      const int near = row / 2, far = std::clamp(row % 2 == 0 ? near - 1 : near + 1, 0, coarse.rows - 1);
      const float* const un = u.data() + static_cast<std::size_t>(near) * columns;
      const float* const uf = u.data() + static_cast<std::size_t>(far) * columns;
      const float* const mn = coarse.domain.data() + static_cast<std::size_t>(near) * columns;
      const float* const mf = coarse.domain.data() + static_cast<std::size_t>(far) * columns;
      float* const out =
          finer.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(fine.columns);
      for (int i = 0; i < fine.columns; ++i) {
        const int a = i / 2, b = std::clamp(i % 2 == 0 ? a - 1 : a + 1, 0, coarse.columns - 1);
        const float w0 = 9 * mn[a], w1 = 3 * mn[b], w2 = 3 * mf[a], w3 = mf[b], sum = w0 + w1 + w2 + w3;
        out[i] = sum > 0 ? (w0 * un[a] + w1 * un[b] + w2 * uf[a] + w3 * uf[b]) / sum : 0.0F;
      }
    }
  });
  return finer;
}

// Fewer nodes than that are solved at once.
constexpr int CoarsestNodes = 8;
constexpr int StepsAtFinest = 24;
constexpr int MostSteps = 400;

}  // namespace

std::vector<float> SplineSurface(int columns, int rows, std::span<const float> domain,
                                 std::vector<GridPoint> points, const SplineShape& shape, int threads,
                                 const std::function<bool()>& isToEnd) {
  std::vector<Level> levels(1);
  levels[0].columns = columns, levels[0].rows = rows;
  levels[0].domain.assign(domain.begin(), domain.end());
  double mean = 0, weights = 0;
  for (const GridPoint& point : points)
    mean += static_cast<double>(point.weight * point.depth), weights += static_cast<double>(point.weight);
  mean /= std::max(weights, 1e-30);
  for (GridPoint& point : points) point.depth -= static_cast<float>(mean);
  Gather(columns, rows, points);
  levels[0].points = std::move(points);
  while (levels.back().columns > CoarsestNodes && levels.back().rows > CoarsestNodes) {
    levels.push_back(Coarser(levels.back()));
  }
  const double smoothing4 = std::pow(shape.smoothing, 4);
  const double tension = shape.tensionLength > 0 ? 1 / (shape.tensionLength * shape.tensionLength) : 0;
  std::vector<float> u;
  for (std::size_t l = levels.size(); l-- > 0;) {
    Level& level = levels[l];
    if (u.empty()) {
      u.assign(level.domain.size(), 0.0F);
    } else {
      u = Finer(levels[l + 1], u, level, threads);
      levels.pop_back();
    }
    const double node = std::pow(2.0, static_cast<double>(l));
    // Of a skin the bending is no more than what keeps points apart.
    const double bending = (shape.tensionLength > 0 ? smoothing4 : smoothing4 * 1e-2) / (node * node);
    const double stretching = shape.tensionLength > 0 ? smoothing4 * tension : smoothing4;
    const SplineEnergy energy(level.columns, level.rows, level.domain, level.points,
                              static_cast<float>(bending), static_cast<float>(stretching));
    const int steps = std::min<int>(MostSteps, StepsAtFinest << std::min<std::size_t>(l, 6));
    RelaxSpline(energy, u, steps, threads, isToEnd);
  }
  for (float& one : u) one += static_cast<float>(mean);
  return u;
}

}  // namespace sondrix
