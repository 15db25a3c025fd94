#include "chart/spline_energy.h"

#include "chart/bands.h"
#include "core/files.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

namespace sondrix {
namespace {

// The four nodes around a point and their shares.
struct Corners {
  std::size_t column;
  float left, right, above, below;
};

Corners CornersOf(const GridPoint& point) {
  const float column = std::floor(point.x), row = std::floor(point.y);
  const float right = point.x - column, below = point.y - row;
  return {static_cast<std::size_t>(column), 1 - right, right, 1 - below, below};
}

// Differences across rows, of which each is needed for several rows.
struct RowDifferences {
  std::vector<float> values;
  int row = -1;  // none yet
};

}  // namespace

SplineEnergy::SplineEnergy(int columns, int rows, std::vector<float> domain, std::vector<GridPoint> points,
                           float bending, float stretching)
    : columns_(columns),
      rows_(rows),
      domain_(std::move(domain)),
      points_(std::move(points)),
      firstOfRow_(static_cast<std::size_t>(rows) + 1),
      bending_(bending),
      stretching_(stretching) {
  std::size_t next = 0;
  for (int row = 0; row <= rows; ++row) {
    while (next < points_.size() && points_[next].y < static_cast<float>(row)) ++next;
    firstOfRow_[static_cast<std::size_t>(row)] = next;
  }
}

void SplineEnergy::AddPoints(std::span<const float> u, std::span<float> out, int row) const {
  const auto add = [&](int between, bool isBelow) {
    const float* const above = u.data() + RowStart(between);
    const float* const below = above + columns_;
    float* const target = out.data() + RowStart(row);
    for (std::size_t p = firstOfRow_[static_cast<std::size_t>(between)];
         p < firstOfRow_[static_cast<std::size_t>(between) + 1]; ++p) {
      const Corners c = CornersOf(points_[p]);
      const float depth = c.above * (c.left * above[c.column] + c.right * above[c.column + 1]) +
                          c.below * (c.left * below[c.column] + c.right * below[c.column + 1]);
      const float pull = points_[p].weight * depth * (isBelow ? c.below : c.above);
      target[c.column] += pull * c.left;
      target[c.column + 1] += pull * c.right;
    }
  };
  if (row > 0) add(row - 1, true);
  if (row + 1 < rows_) add(row, false);
}

void SplineEnergy::Apply(std::span<const float> u, std::span<float> out, int from, int to) const {
  const int columns = columns_;
  const auto width = static_cast<std::size_t>(columns);
  const auto rowOf = [&](std::span<const float> values, int row) { return values.data() + RowStart(row); };
  // Of each row: u_yy; between it and the next: u_xy and u_y. The row before, this one, the next.
  std::array<RowDifferences, 3> bends;
  std::array<RowDifferences, 2> twists, slopes;
  for (RowDifferences& one : bends) one.values.assign(width, 0);
  for (RowDifferences& one : twists) one.values.assign(width + 1, 0);
  for (RowDifferences& one : slopes) one.values.assign(width, 0);
  std::vector<float> along(width + 2, 0), steps(width + 1, 0);

  const auto bend = [&](int row) -> const float* {
    RowDifferences& kept = bends[static_cast<std::size_t>((row + 3) % 3)];
    if (kept.row == row && row >= 0) return kept.values.data();
    kept.row = row;
    float* const d = kept.values.data();
    if (row < 1 || row + 1 >= rows_) {
      std::fill_n(d, width, 0.0F);
      return d;
    }
    const float *u0 = rowOf(u, row - 1), *u1 = rowOf(u, row), *u2 = rowOf(u, row + 1);
    const float *m0 = rowOf(domain_, row - 1), *m1 = rowOf(domain_, row), *m2 = rowOf(domain_, row + 1);
    for (int i = 0; i < columns; ++i) d[i] = m0[i] * m1[i] * m2[i] * (u0[i] - 2 * u1[i] + u2[i]);
    return d;
  };
  // The first value of a twist lies left of the first node and is 0, the last right of the last.
  const auto twist = [&](int row) -> const float* {
    RowDifferences& kept = twists[static_cast<std::size_t>((row + 2) % 2)];
    if (kept.row == row && row >= 0) return kept.values.data();
    kept.row = row;
    float* const d = kept.values.data();
    if (row < 0 || row + 1 >= rows_) {
      std::fill_n(d, width + 1, 0.0F);
      return d;
    }
    const float *u0 = rowOf(u, row), *u1 = rowOf(u, row + 1);
    const float *m0 = rowOf(domain_, row), *m1 = rowOf(domain_, row + 1);
    for (int i = 0; i + 1 < columns; ++i) {
      d[i + 1] = m0[i] * m0[i + 1] * m1[i] * m1[i + 1] * (u1[i + 1] - u1[i] - u0[i + 1] + u0[i]);
    }
    return d;
  };
  const auto slope = [&](int row) -> const float* {
    RowDifferences& kept = slopes[static_cast<std::size_t>((row + 2) % 2)];
    if (kept.row == row && row >= 0) return kept.values.data();
    kept.row = row;
    float* const d = kept.values.data();
    if (row < 0 || row + 1 >= rows_) {
      std::fill_n(d, width, 0.0F);
      return d;
    }
    const float *u0 = rowOf(u, row), *u1 = rowOf(u, row + 1);
    const float *m0 = rowOf(domain_, row), *m1 = rowOf(domain_, row + 1);
    for (int i = 0; i < columns; ++i) d[i] = m0[i] * m1[i] * (u1[i] - u0[i]);
    return d;
  };

  for (int row = from; row < to; ++row) {
    const float *b0 = bend(row - 1), *b1 = bend(row), *b2 = bend(row + 1);
    const float *t0 = twist(row - 1), *t1 = twist(row);
    const float *s0 = slope(row - 1), *s1 = slope(row);
    const float *u1 = rowOf(u, row), *m1 = rowOf(domain_, row);
    // along[i + 1] is u_xx at node i, steps[i] the difference between the nodes i - 1 and i.
    for (int i = 1; i + 1 < columns; ++i) {
      along[static_cast<std::size_t>(i) + 1] =
          m1[i - 1] * m1[i] * m1[i + 1] * (u1[i - 1] - 2 * u1[i] + u1[i + 1]);
    }
    for (int i = 1; i < columns; ++i) {
      steps[static_cast<std::size_t>(i)] = m1[i - 1] * m1[i] * (u1[i] - u1[i - 1]);
    }
    const float *a = along.data(), *d = steps.data();
    float* const target = out.data() + RowStart(row);
    const float bending = bending_, stretching = stretching_;
    for (int i = 0; i < columns; ++i) {
      target[i] = bending * (a[i] - 2 * a[i + 1] + a[i + 2] + b0[i] - 2 * b1[i] + b2[i] +
                             2 * (t0[i] - t0[i + 1] - t1[i] + t1[i + 1])) +
                  stretching * (s0[i] - s1[i] + d[i] - d[i + 1]);
    }
    AddPoints(u, out, row);
  }
}

std::vector<float> SplineEnergy::Pull() const {
  std::vector<float> pull(domain_.size(), 0.0F);
  for (int row = 0; row + 1 < rows_; ++row) {
    float* const above = pull.data() + RowStart(row);
    float* const below = above + columns_;
    for (std::size_t p = firstOfRow_[static_cast<std::size_t>(row)];
         p < firstOfRow_[static_cast<std::size_t>(row) + 1]; ++p) {
      const Corners c = CornersOf(points_[p]);
      const float force = points_[p].weight * points_[p].depth;
      above[c.column] += force * c.above * c.left;
      above[c.column + 1] += force * c.above * c.right;
      below[c.column] += force * c.below * c.left;
      below[c.column + 1] += force * c.below * c.right;
    }
  }
  return pull;
}

std::vector<float> SplineEnergy::Diagonal() const {
  std::vector<float> diagonal(domain_.size(), 0.0F);
  const auto columns = static_cast<std::size_t>(columns_);
  const float* const m = domain_.data();
  float* const d = diagonal.data();
  for (int row = 0; row < rows_; ++row) {
    const std::size_t start = RowStart(row);
    for (std::size_t k = start; k < start + columns; ++k) {
      const std::size_t column = k - start;
      if (column > 0 && column + 1 < columns) {
        const float share = bending_ * m[k - 1] * m[k] * m[k + 1];
        d[k - 1] += share, d[k] += 4 * share, d[k + 1] += share;
      }
      if (row > 0 && row + 1 < rows_) {
        const float share = bending_ * m[k - columns] * m[k] * m[k + columns];
        d[k - columns] += share, d[k] += 4 * share, d[k + columns] += share;
      }
      if (column + 1 < columns) {
        const float share = stretching_ * m[k] * m[k + 1];
        d[k] += share, d[k + 1] += share;
      }
      if (row + 1 == rows_) continue;
      const float share = stretching_ * m[k] * m[k + columns];
      d[k] += share, d[k + columns] += share;
      if (column + 1 == columns) continue;
      const float twist = 2 * bending_ * m[k] * m[k + 1] * m[k + columns] * m[k + columns + 1];
      d[k] += twist, d[k + 1] += twist, d[k + columns] += twist, d[k + columns + 1] += twist;
    }
    if (row + 1 == rows_) continue;
    for (std::size_t p = firstOfRow_[static_cast<std::size_t>(row)];
         p < firstOfRow_[static_cast<std::size_t>(row) + 1]; ++p) {
      const Corners c = CornersOf(points_[p]);
      const float weight = points_[p].weight;
      float* const above = d + start + c.column;
      float* const below = above + columns;
      above[0] += weight * c.above * c.above * c.left * c.left;
      above[1] += weight * c.above * c.above * c.right * c.right;
      below[0] += weight * c.below * c.below * c.left * c.left;
      below[1] += weight * c.below * c.below * c.right * c.right;
    }
  }
  for (float& one : diagonal) {
    if (one <= 0) one = 1;
  }
  return diagonal;
}

namespace {

// Sums are kept by row, so that they don't depend on the bands.
class RowSums {
 public:
  explicit RowSums(int rows) : sums_(static_cast<std::size_t>(rows)) {}
  double& operator[](int row) { return sums_[static_cast<std::size_t>(row)]; }
  double Sum() const { return std::accumulate(sums_.begin(), sums_.end(), 0.0); }

 private:
  std::vector<double> sums_;
};

}  // namespace

void RelaxSpline(const SplineEnergy& energy, std::vector<float>& u, int steps, int threads,
                 const std::function<bool()>& isToEnd) {
  const int rows = energy.Rows();
  const auto columns = static_cast<std::size_t>(energy.Columns());
  std::vector<float> inverse = energy.Diagonal();
  for (float& one : inverse) one = 1 / one;
  std::vector<float> rest = energy.Pull();
  std::vector<float> way(u.size()), image(u.size());
  RowSums sums(rows);

  // rest = Pull - A u; way = rest / diagonal.
  InBands(rows, threads, [&](int from, int to) {
    energy.Apply(u, image, from, to);
    for (int row = from; row < to; ++row) {
      double sum = 0;
      const std::size_t end = static_cast<std::size_t>(row + 1) * columns;
      for (std::size_t k = end - columns; k < end; ++k) {
        rest[k] -= image[k];
        way[k] = rest[k] * inverse[k];
        sum += static_cast<double>(rest[k] * way[k]);
      }
      sums[row] = sum;
    }
  });
  double old = sums.Sum();
  const double first = old;
  for (int step = 0; step < steps && old > first * 1e-10 && old > 0; ++step) {
    if (isToEnd && isToEnd()) throw EndAsked();
    InBands(rows, threads, [&](int from, int to) {
      energy.Apply(way, image, from, to);
      for (int row = from; row < to; ++row) {
        double sum = 0;
        const std::size_t end = static_cast<std::size_t>(row + 1) * columns;
        for (std::size_t k = end - columns; k < end; ++k) sum += static_cast<double>(way[k] * image[k]);
        sums[row] = sum;
      }
    });
    const double curvature = sums.Sum();
    if (!(curvature > 0)) break;
    const auto length = static_cast<float>(old / curvature);
    InBands(rows, threads, [&](int from, int to) {
      for (int row = from; row < to; ++row) {
        double sum = 0;
        const std::size_t end = static_cast<std::size_t>(row + 1) * columns;
        for (std::size_t k = end - columns; k < end; ++k) {
          u[k] += length * way[k];
          rest[k] -= length * image[k];
          sum += static_cast<double>(rest[k] * rest[k] * inverse[k]);
        }
        sums[row] = sum;
      }
    });
    const double now = sums.Sum();
    const auto share = static_cast<float>(now / old);
    old = now;
    InBands(rows, threads, [&](int from, int to) {
      const std::size_t end = static_cast<std::size_t>(to) * columns;
      for (std::size_t k = static_cast<std::size_t>(from) * columns; k < end; ++k) {
        way[k] = rest[k] * inverse[k] + share * way[k];
      }
    });
  }
}

}  // namespace sondrix
