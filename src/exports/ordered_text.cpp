#include "exports/ordered_text.h"

#include "core/files.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace sondrix {
namespace {

// The items that one thread formats before their text is written.
struct Batch {
  std::size_t begin = 0, end = 0;
};

constexpr std::size_t BatchSize = SoundingList::BlockSize;  // rows or points

}  // namespace

void WriteInOrder(const TextItems& items, const ExportRun& run, OutputFile& file) {
  std::mutex mutex;  // of what follows
  std::condition_variable isNext;
  std::size_t taken = 0, written = 0;  // items
  std::exception_ptr failure;

  const auto take = [&]() -> Batch {
    const std::lock_guard lock(mutex);
    if (failure) return {};
    const std::size_t begin = taken;
    for (std::size_t size = 0; taken < items.count && size < BatchSize; ++taken) size += items.sizeOf(taken);
    return {begin, taken};
  };
  const auto work = [&] {
    try {
      const FormatItem format = items.makeFormat();
      RowText rows;
      for (Batch batch = take(); batch.begin < batch.end; batch = take()) {
        run.EndIfAsked();
        rows.Clear();
        for (std::size_t i = batch.begin; i < batch.end; ++i) format(i, rows);
        std::unique_lock lock(mutex);
        isNext.wait(lock, [&] { return written == batch.begin || failure; });
        if (failure) return;
        file.Write(rows.Text());
        written = batch.end;
        isNext.notify_all();
      }
    } catch (...) {
      const std::lock_guard lock(mutex);
      if (!failure) failure = std::current_exception();
      isNext.notify_all();
    }
  };
  {
    const std::size_t workers =
        std::clamp<std::size_t>(items.count, 1, static_cast<std::size_t>(run.threads));
    std::vector<std::jthread> threads;
    for (std::size_t i = 1; i < workers; ++i) threads.emplace_back(work);
    work();
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace sondrix
