#include "chart/bands.h"

#include "core/parallel.h"

#include <algorithm>
#include <cstddef>

namespace sondrix {
namespace {

// Below that a thread costs more than it saves.
constexpr int FewestRows = 32;

int EdgeOf(int band, int bands, int rows) {
  return static_cast<int>(static_cast<long long>(rows) * band / bands);
}

}  // namespace

void InBands(int rows, int threads, const std::function<void(int from, int to)>& work) {
  const int bands = std::clamp(rows / FewestRows, 1, std::max(1, threads));
  if (bands == 1) return work(0, rows);
  InParallel(static_cast<std::size_t>(bands), bands, [&] {
    return [&](std::size_t band) {
      const int at = static_cast<int>(band);
      work(EdgeOf(at, bands, rows), EdgeOf(at + 1, bands, rows));
    };
  });
}

}  // namespace sondrix
