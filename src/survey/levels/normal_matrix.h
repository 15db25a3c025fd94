#pragma once

#include "survey/levels/robust_fit.h"

#include <Eigen/Core>
#include <cstddef>

namespace sondrix {

// The normal equations of weighted rows with few unknowns, kept dense so that rows can be taken in and out.
class NormalMatrix {
 public:
  explicit NormalMatrix(std::size_t unknowns)
      : lower_(
            Eigen::MatrixXd::Zero(static_cast<Eigen::Index>(unknowns), static_cast<Eigen::Index>(unknowns))),
        right_(Eigen::VectorXd::Zero(static_cast<Eigen::Index>(unknowns))) {}

  void Add(const FitRows& rows, std::size_t row, double weight) {
    const std::span<const FitTerm> terms = rows.Terms(row);
    for (const FitTerm& one : terms) {
      const auto i = static_cast<Eigen::Index>(one.column);
      right_[i] += weight * one.factor * rows.Value(row);
      for (const FitTerm& other : terms) {
        if (other.column <= one.column) {
          lower_(i, static_cast<Eigen::Index>(other.column)) += weight * one.factor * other.factor;
        }
      }
    }
  }
  // Each row by its own error.
  void Add(const FitRows& rows) {
    for (std::size_t r = 0; r < rows.size(); ++r) Add(rows, r, 1 / (rows.Error(r) * rows.Error(r)));
  }
  NormalMatrix& operator+=(const NormalMatrix& other) {
    lower_ += other.lower_;
    right_ += other.right_;
    return *this;
  }
  NormalMatrix& operator-=(const NormalMatrix& other) {
    lower_ -= other.lower_;
    right_ -= other.right_;
    return *this;
  }

  Eigen::MatrixXd Whole() const { return lower_.selfadjointView<Eigen::Lower>(); }
  const Eigen::VectorXd& Right() const { return right_; }

 private:
  Eigen::MatrixXd lower_;
  Eigen::VectorXd right_;
};

}  // namespace sondrix
