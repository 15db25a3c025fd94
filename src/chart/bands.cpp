#include "chart/bands.h"

#include <algorithm>
#include <atomic>
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

// Calls work(thread) in so many threads; what the first of them throws is thrown on.
void InThreads(int threads, const std::function<void(int thread)>& work) {
  std::vector<std::exception_ptr> thrown(static_cast<std::size_t>(threads));
  const auto guarded = [&](int thread) {
    try {
      work(thread);
    } catch (...) {
      thrown[static_cast<std::size_t>(thread)] = std::current_exception();
    }
  };
  {
    std::vector<std::jthread> others;
    for (int thread = 1; thread < threads; ++thread) others.emplace_back(guarded, thread);
    guarded(0);
  }
  for (const std::exception_ptr& one : thrown) {
    if (one) std::rethrow_exception(one);
  }
}

}  // namespace

void InBands(int rows, int threads, const std::function<void(int from, int to)>& work) {
  const int bands = std::clamp(rows / FewestRows, 1, std::max(1, threads));
  if (bands == 1) return work(0, rows);
  InThreads(bands, [&](int band) { work(EdgeOf(band, bands, rows), EdgeOf(band + 1, bands, rows)); });
}

void InTurns(int count, int threads, const std::function<void(int i)>& work) {
  std::atomic<int> next = 0;
  InThreads(std::clamp(threads, 1, std::max(1, count)), [&](int) {
    for (int i = next++; i < count; i = next++) work(i);
  });
}

}  // namespace sondrix
