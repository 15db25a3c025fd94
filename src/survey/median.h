#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace sondrix {

// The median of some values, at least one, the upper of the two in the middle where they are even. Changes
// their order.
inline float UpperMedianOf(std::span<float> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The same, and the mean of the two in the middle.
inline float MedianOf(std::span<float> values) {
  const float upper = UpperMedianOf(values);
  if (values.size() % 2 == 1) return upper;
  return (upper + *std::max_element(values.begin(),
                                    values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2))) /
         2;
}

}  // namespace sondrix
