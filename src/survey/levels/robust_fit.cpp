#include "survey/levels/robust_fit.h"

#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <algorithm>
#include <cmath>
#include <map>

namespace sondrix {
namespace {

using Matrix = Eigen::SparseMatrix<double>;
using RowMatrix = Eigen::SparseMatrix<double, Eigen::RowMajor>;
using Eigen::VectorXd;

constexpr double CauchyWidth = 2.385;
constexpr double NormalOfMedian = 1.4826;  // standard deviation beside the median of absolute values
constexpr double LeastScale = 1e-3;
constexpr int MaxSteps = 60;
constexpr double Settled = 1e-5;           // metres that an unknown still moves
constexpr double HoldsNothing = 10;        // metres, the error of a belief
constexpr std::size_t MaxForErrors = 600;  // unknowns: their whole inverse is needed

RowMatrix MatrixOf(const FitRows& rows, std::size_t unknowns) {
  RowMatrix matrix(static_cast<Eigen::Index>(rows.size()), static_cast<Eigen::Index>(unknowns));
  std::vector<Eigen::Triplet<double>> triplets;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (const FitTerm& term : rows.Terms(r)) {
      triplets.emplace_back(static_cast<int>(r), static_cast<int>(term.column), term.factor);
    }
  }
  matrix.setFromTriplets(triplets.begin(), triplets.end());
  return matrix;
}

VectorXd ValuesOf(const FitRows& rows) {
  VectorXd values(static_cast<Eigen::Index>(rows.size()));
  for (std::size_t r = 0; r < rows.size(); ++r) values[static_cast<Eigen::Index>(r)] = rows.Value(r);
  return values;
}

double MedianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// By how much the errors are larger than said.
double ScaleOf(const FitRows& rows, const VectorXd& left) {
  std::vector<double> sizes(rows.size());
  for (std::size_t r = 0; r < rows.size(); ++r) {
    sizes[r] = std::abs(left[static_cast<Eigen::Index>(r)]) / rows.Error(r);
  }
  return std::max(NormalOfMedian * MedianOf(std::move(sizes)), LeastScale);
}

// The square roots of the diagonal of H^-1 (sum over clusters of g g^T + beliefs) H^-1, g = sum of w r x.
// Beliefs that hold nothing back stay out: by rows of differences only, the common level of all isn't told,
// and the errors are those beside it.
std::vector<double> ErrorsOf(const FitRows& rows, const RowMatrix& matrix, const VectorXd& left,
                             const VectorXd& weights, const FitRows& beliefs,
                             const Eigen::SimplicialLDLT<Matrix>& solver) {
  const Eigen::Index size = matrix.cols();
  std::map<std::uint32_t, VectorXd> clusters;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    VectorXd& sum = clusters.try_emplace(rows.Cluster(r), VectorXd::Zero(size)).first->second;
    const auto row = static_cast<Eigen::Index>(r);
    for (const FitTerm& term : rows.Terms(r)) {
      sum[static_cast<Eigen::Index>(term.column)] += weights[row] * left[row] * term.factor;
    }
  }
  Eigen::MatrixXd middle = Eigen::MatrixXd::Zero(size, size);
  for (std::size_t r = 0; r < beliefs.size(); ++r) {
    if (beliefs.Error(r) >= HoldsNothing) continue;
    for (const FitTerm& one : beliefs.Terms(r)) {
      for (const FitTerm& other : beliefs.Terms(r)) {
        middle(static_cast<Eigen::Index>(one.column), static_cast<Eigen::Index>(other.column)) +=
            one.factor * other.factor / (beliefs.Error(r) * beliefs.Error(r));
      }
    }
  }
  for (const auto& [cluster, sum] : clusters) middle.noalias() += sum * sum.transpose();
  const Eigen::MatrixXd half = solver.solve(middle);
  const Eigen::MatrixXd whole = solver.solve(half.transpose().eval());
  std::vector<double> errors(static_cast<std::size_t>(size));
  for (Eigen::Index i = 0; i < size; ++i) {
    errors[static_cast<std::size_t>(i)] = std::sqrt(std::max(0.0, whole(i, i)));
  }
  return errors;
}

}  // namespace

void FitRows::Add(std::span<const FitTerm> terms, double value, double error, std::uint32_t cluster) {
  terms_.insert(terms_.end(), terms.begin(), terms.end());
  begins_.push_back(terms_.size());
  values_.push_back(value);
  errors_.push_back(error);
  clusters_.push_back(cluster);
}

double FitRows::Left(std::size_t row, std::span<const double> unknowns) const {
  double left = Value(row);
  for (const FitTerm& term : Terms(row)) left -= term.factor * unknowns[term.column];
  return left;
}

RobustFit FitRobustly(const FitRows& rows, const FitRows& beliefs, std::size_t unknowns) {
  const RowMatrix matrix = MatrixOf(rows, unknowns);
  const VectorXd values = ValuesOf(rows);
  VectorXd trust(static_cast<Eigen::Index>(beliefs.size()));
  for (std::size_t r = 0; r < beliefs.size(); ++r) {
    trust[static_cast<Eigen::Index>(r)] = 1 / (beliefs.Error(r) * beliefs.Error(r));
  }
  const RowMatrix belief = MatrixOf(beliefs, unknowns);
  const Matrix believed = belief.transpose() * trust.asDiagonal() * belief;
  const VectorXd believedRight = belief.transpose() * (trust.asDiagonal() * ValuesOf(beliefs));

  VectorXd solution = VectorXd::Zero(static_cast<Eigen::Index>(unknowns));
  VectorXd left = values;
  VectorXd weights(static_cast<Eigen::Index>(rows.size()));
  Eigen::SimplicialLDLT<Matrix> solver;
  RobustFit fit;
  for (int step = 0; step < MaxSteps && rows.size() > 0; ++step) {
    fit.scale = ScaleOf(rows, left);
    for (std::size_t r = 0; r < rows.size(); ++r) {
      const auto row = static_cast<Eigen::Index>(r);
      const double error = fit.scale * rows.Error(r);
      const double far = left[row] / error / CauchyWidth;
      weights[row] = 1 / (error * error * (1 + far * far));
    }
    const Matrix normal = Matrix(matrix.transpose() * weights.asDiagonal() * matrix) + believed;
    if (step == 0) solver.analyzePattern(normal);
    solver.factorize(normal);
    const VectorXd next = solver.solve(matrix.transpose() * (weights.asDiagonal() * values) + believedRight);
    const double moved = (next - solution).cwiseAbs().maxCoeff();
    solution = next;
    left = values - matrix * solution;
    if (moved < Settled) break;
  }
  fit.unknowns.assign(solution.begin(), solution.end());
  fit.weights.assign(weights.begin(), weights.end());
  if (rows.size() > 0 && unknowns <= MaxForErrors) {
    fit.errors = ErrorsOf(rows, matrix, left, weights, beliefs, solver);
  }
  return fit;
}

}  // namespace sondrix
