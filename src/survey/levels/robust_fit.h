#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sondrix {

struct FitTerm {
  std::uint32_t column = 0;
  double factor = 0;
};

// Equations for some unknowns: the sum of factor * unknown over a row's terms is its value, but for an error.
class FitRows {
 public:
  // error: the standard deviation that is expected of value. Rows whose errors hang together, as those of two
  // trips do, share a cluster.
  void Add(std::span<const FitTerm> terms, double value, double error, std::uint32_t cluster = 0);

  std::size_t size() const { return values_.size(); }
  std::span<const FitTerm> Terms(std::size_t row) const {
    return std::span(terms_).subspan(begins_[row], begins_[row + 1] - begins_[row]);
  }
  double Value(std::size_t row) const { return values_[row]; }
  double Error(std::size_t row) const { return errors_[row]; }
  std::uint32_t Cluster(std::size_t row) const { return clusters_[row]; }
  double Left(std::size_t row, std::span<const double> unknowns) const;  // value less what the unknowns give

 private:
  std::vector<FitTerm> terms_;
  std::vector<std::size_t> begins_ = {0};
  std::vector<double> values_, errors_;
  std::vector<std::uint32_t> clusters_;
};

struct RobustFit {
  std::vector<double> unknowns;
  std::vector<double> errors;   // standard errors by clusters; empty where there are too many unknowns
  std::vector<double> weights;  // of the rows in the last step, 1 over a variance
  double scale = 1;             // by which the rows' errors are larger than they were said to be
};

// The unknowns that fit rows best beside what is believed of them (rows too, whose errors are as they stand,
// and enough of them that every unknown is told): iterated weighted least squares with Cauchy's weights at
// 2.385 standard deviations, 95 % as good as least squares where errors are normal (P. W. Holland and R. E.
// Welsch, 1977), their size by the median of the absolute residuals. The standard errors allow for rows of
// one cluster that err together (K.-Y. Liang and S. L. Zeger, 1986).
RobustFit FitRobustly(const FitRows& rows, const FitRows& beliefs, std::size_t unknowns);

}  // namespace sondrix
