#include "chart/bands.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

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
  std::vector<std::exception_ptr> thrown(static_cast<std::size_t>(bands));
  {
    std::vector<std::jthread> others;
    for (int band = 1; band < bands; ++band) {
      others.emplace_back([&, band] {
        try {
          work(EdgeOf(band, bands, rows), EdgeOf(band + 1, bands, rows));
        } catch (...) {
          thrown[static_cast<std::size_t>(band)] = std::current_exception();
        }
      });
    }
    try {
      work(0, EdgeOf(1, bands, rows));
    } catch (...) {
      thrown[0] = std::current_exception();
    }
  }
  for (const std::exception_ptr& one : thrown) {
    if (one) std::rethrow_exception(one);
  }
}

}  // namespace sondrix
