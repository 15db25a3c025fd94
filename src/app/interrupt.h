#pragma once

#include <vector>

namespace sondrix {

// While it lives, the signals that ask a program to end end no process but are noted, however often they
// come. One that the caller had ignored, as a script does for a program in the background, stays ignored.
class InterruptGuard {
 public:
  InterruptGuard();
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

 private:
  std::vector<void (*)(int)> previous_;  // of EndSignals()
};

// Whether such a signal came since the guard was made.
bool Interrupted();

}  // namespace sondrix
