#include "chart/surroundings.h"

#include "chart/bands.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace sondrix {

std::vector<float> OffMiddle(int columns, int rows, std::span<const std::uint8_t> marked, int reach,
                             int threads) {
  const auto width = static_cast<std::size_t>(columns);
  // Of the marked nodes of a row within reach: how many, and the sum of how far to the east they are.
  std::vector<float> counts(marked.size()), easts(marked.size());
  InBands(rows, threads, [&](int from, int to) {
    std::vector<double> number(width + 1), sum(width + 1);
    for (int row = from; row < to; ++row) {
      const std::size_t start = static_cast<std::size_t>(row) * width;
      for (std::size_t i = 0; i < width; ++i) {
        number[i + 1] = number[i] + marked[start + i];
        sum[i + 1] = sum[i] + static_cast<double>(i) * marked[start + i];
      }
      for (int i = 0; i < columns; ++i) {
        const auto first = static_cast<std::size_t>(std::max(0, i - reach));
        const auto last = static_cast<std::size_t>(std::min(columns, i + reach + 1));
        const double count = number[last] - number[first];
        counts[start + static_cast<std::size_t>(i)] = static_cast<float>(count);
        easts[start + static_cast<std::size_t>(i)] = static_cast<float>(sum[last] - sum[first] - i * count);
      }
    }
  });
  std::vector<float> off(marked.size());
  InBands(columns, threads, [&](int from, int to) {
    const auto span = static_cast<std::size_t>(to - from);
    // Sums over the rows within reach of the present one; south is counted from row 0.
    std::vector<double> count(span), east(span), south(span);
    const auto add = [&](int row, double sign) {
      const std::size_t start = static_cast<std::size_t>(row) * width + static_cast<std::size_t>(from);
      for (std::size_t c = 0; c < span; ++c) {
        const auto number = sign * static_cast<double>(counts[start + c]);
        count[c] += number, south[c] += number * row;
        east[c] += sign * static_cast<double>(easts[start + c]);
      }
    };
    for (int row = 0; row < std::min(reach, rows); ++row) add(row, 1);
    for (int row = 0; row < rows; ++row) {
      if (row + reach < rows) add(row + reach, 1);
      if (row - reach - 1 >= 0) add(row - reach - 1, -1);
      float* const out = off.data() + static_cast<std::size_t>(row) * width + from;
      for (std::size_t c = 0; c < span; ++c) {
        constexpr double one = 0.5;  // sums of counts are whole but for rounding
        out[c] = static_cast<float>(count[c] > one ? std::hypot(east[c] / count[c], south[c] / count[c] - row)
                                                   : reach);
      }
    }
  });
  return off;
}

void MeanAround(int columns, int rows, std::vector<float>& values, int reach, int threads) {
  const auto width = static_cast<std::size_t>(columns);
  std::vector<float> along(values.size());
  InBands(rows, threads, [&](int from, int to) {
    std::vector<double> sum(width + 1);
    for (int row = from; row < to; ++row) {
      const std::size_t start = static_cast<std::size_t>(row) * width;
      for (std::size_t i = 0; i < width; ++i) sum[i + 1] = sum[i] + static_cast<double>(values[start + i]);
      for (int i = 0; i < columns; ++i) {
        const int first = std::max(0, i - reach), last = std::min(columns, i + reach + 1);
        along[start + static_cast<std::size_t>(i)] = static_cast<float>(
            (sum[static_cast<std::size_t>(last)] - sum[static_cast<std::size_t>(first)]) / (last - first));
      }
    }
  });
  InBands(columns, threads, [&](int from, int to) {
    const auto span = static_cast<std::size_t>(to - from);
    std::vector<double> sum(span);
    const auto add = [&](int row, double sign) {
      const std::size_t start = static_cast<std::size_t>(row) * width + static_cast<std::size_t>(from);
      for (std::size_t c = 0; c < span; ++c) sum[c] += sign * static_cast<double>(along[start + c]);
    };
    for (int row = 0; row < std::min(reach, rows); ++row) add(row, 1);
    for (int row = 0; row < rows; ++row) {
      if (row + reach < rows) add(row + reach, 1);
      if (row - reach - 1 >= 0) add(row - reach - 1, -1);
      const int count = std::min(rows, row + reach + 1) - std::max(0, row - reach);
      float* const out = values.data() + static_cast<std::size_t>(row) * width + from;
      for (std::size_t c = 0; c < span; ++c) out[c] = static_cast<float>(std::max(0.0, sum[c]) / count);
    }
  });
}

}  // namespace sondrix
