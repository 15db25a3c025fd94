#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace sondrix {

// A line on a terminal's standard error that tells what goes on and how far it has come; nothing where nobody
// looks. A thread of its own shows it, so that steps need not know of it.
class Progress {
 public:
  explicit Progress(bool isShown);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // A step begins that is done when Done holds that much; 0: it isn't known how far it comes. unit: what is
  // counted. Not while others still count on.
  void Begin(std::string_view step, std::int64_t whole, std::string_view unit);
  std::atomic<std::int64_t>& Done() { return done_; }
  // The line goes; the next step shows one again.
  void End();

 private:
  void Show();
  void Erase();

  bool isShown_;
  std::atomic<std::int64_t> done_ = 0;
  std::mutex mutex_;  // of what follows
  std::condition_variable_any hasEnded_;
  std::string step_, unit_;  // step empty: between two
  std::int64_t whole_ = 0;
  std::size_t width_ = 0;  // characters that stand on the line
  std::jthread thread_;
};

}  // namespace sondrix
