#include "app/chart/progress.h"

#include "core/code_page.h"
#include "platform/platform.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stop_token>

namespace sondrix {
namespace {

constexpr auto Pace = std::chrono::milliseconds(100);

}  // namespace

Progress::Progress(bool isShown) : isShown_(isShown) {
  if (!isShown_) return;
  thread_ = std::jthread([this](const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (!hasEnded_.wait_for(lock, stop, Pace, [&stop] { return stop.stop_requested(); })) Show();
  });
}

Progress::~Progress() { End(); }

void Progress::Begin(std::string_view step, std::int64_t whole, std::string_view unit) {
  const std::lock_guard lock(mutex_);
  step_ = step;
  unit_ = unit;
  whole_ = whole;
  done_ = 0;
}

void Progress::End() {
  const std::lock_guard lock(mutex_);
  step_.clear();
  Erase();
}

void Progress::Show() {
  if (step_.empty()) return;
  std::string line = step_;
  if (whole_ > 0) {
    const std::int64_t done = std::clamp<std::int64_t>(done_, 0, whole_);
    const auto percent = static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(whole_));
    line += ": " + std::to_string(percent) + "% of " + std::to_string(whole_) + " " + unit_;
  }
  const std::size_t width = CharacterCount(line);
  if (width_ > width) line.append(width_ - width, ' ');
  PutText(stderr, "\r" + line);
  std::fflush(stderr);
  width_ = width;
}

void Progress::Erase() {
  if (width_ == 0) return;
  PutText(stderr, "\r" + std::string(width_, ' ') + "\r");
  std::fflush(stderr);
  width_ = 0;
}

}  // namespace sondrix
