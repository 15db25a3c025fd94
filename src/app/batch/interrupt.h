#pragma once

namespace sondrix {

// While it lives, Ctrl-C ends no process but is noted, however often it comes.
class InterruptGuard {
 public:
  InterruptGuard();
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

 private:
  void (*previous_)(int);
};

// Whether Ctrl-C came since the guard was made.
bool Interrupted();

}  // namespace sondrix
