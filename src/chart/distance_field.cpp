#include "chart/distance_field.h"

#include "chart/bands.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace sondrix {
namespace {

constexpr float Far = 1e12F;

// The lower envelope of parabolas over one line of squared distances, in place.
class Envelope {
 public:
  explicit Envelope(std::size_t length) : from_(length), begins_(length + 1), squares_(length) {}

  void Lower(float* values, std::size_t length) {
    std::copy_n(values, length, squares_.begin());
    std::size_t top = 0;
    from_[0] = 0;
    begins_[0] = -1e30, begins_[1] = 1e30;
    for (std::size_t q = 1; q < length; ++q) {
      double crossing = CrossingOf(q, from_[top]);
      while (crossing <= begins_[top]) crossing = CrossingOf(q, from_[--top]);
      from_[++top] = q;
      begins_[top] = crossing, begins_[top + 1] = 1e30;
    }
    std::size_t at = 0;
    for (std::size_t q = 0; q < length; ++q) {
      while (begins_[at + 1] < static_cast<double>(q)) ++at;
      const double way = static_cast<double>(q) - static_cast<double>(from_[at]);
      values[q] = static_cast<float>(way * way + static_cast<double>(squares_[from_[at]]));
    }
  }

 private:
  double CrossingOf(std::size_t q, std::size_t p) const {
    const auto a = static_cast<double>(q), b = static_cast<double>(p);
    return (static_cast<double>(squares_[q]) + a * a - static_cast<double>(squares_[p]) - b * b) /
           (2 * (a - b));
  }

  std::vector<std::size_t> from_;
  std::vector<double> begins_;
  std::vector<float> squares_;
};

}  // namespace

std::vector<float> DistanceField(int columns, int rows, std::span<const std::uint8_t> marked, int threads) {
  const auto width = static_cast<std::size_t>(columns), height = static_cast<std::size_t>(rows);
  std::vector<float> field(width * height);
  for (std::size_t k = 0; k < field.size(); ++k) field[k] = marked[k] != 0 ? 0.0F : Far;
  InBands(columns, threads, [&](int from, int to) {
    // Columns are taken out and put back several at a time: each alone would touch every line of the memory.
    constexpr std::size_t together = 16;
    Envelope envelope(height);
    std::vector<float> lines(together * height);
    const auto end = static_cast<std::size_t>(to);
    for (auto first = static_cast<std::size_t>(from); first < end; first += together) {
      const std::size_t count = std::min(together, end - first);
      for (std::size_t row = 0; row < height; ++row) {
        for (std::size_t c = 0; c < count; ++c) lines[c * height + row] = field[row * width + first + c];
      }
      for (std::size_t c = 0; c < count; ++c) envelope.Lower(lines.data() + c * height, height);
      for (std::size_t row = 0; row < height; ++row) {
        for (std::size_t c = 0; c < count; ++c) field[row * width + first + c] = lines[c * height + row];
      }
    }
  });
  InBands(rows, threads, [&](int from, int to) {
    Envelope envelope(width);
    for (auto row = static_cast<std::size_t>(from); row < static_cast<std::size_t>(to); ++row) {
      float* const line = field.data() + row * width;
      envelope.Lower(line, width);
      for (std::size_t k = 0; k < width; ++k) line[k] = std::sqrt(line[k]);
    }
  });
  return field;
}

}  // namespace sondrix
