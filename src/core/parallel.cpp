#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace sondrix {

void InParallel(std::size_t count, int threads,
                const std::function<std::function<void(std::size_t index)>()>& makeWork) {
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;  // of what follows
  std::exception_ptr failure;
  const auto run = [&] {
    try {
      const std::function<void(std::size_t)> work = makeWork();
      for (std::size_t index = next++; index < count; index = next++) work(index);
    } catch (...) {
      next = count;
      const std::lock_guard lock(mutex);
      if (!failure) failure = std::current_exception();
    }
  };
  {
    std::vector<std::jthread> others;
    const std::size_t workers = std::clamp<std::size_t>(count, 1, static_cast<std::size_t>(threads));
    for (std::size_t i = 1; i < workers; ++i) others.emplace_back(run);
    run();
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace sondrix
