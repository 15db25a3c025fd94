#include "app/interrupt.h"

#include "platform/platform.h"

#include <atomic>
#include <csignal>

namespace sondrix {
namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

// Windows forgets the handler with each signal, so it is set anew.
void NoteInterrupt(int signal) {
  std::signal(signal, NoteInterrupt);
  interrupted.store(true, std::memory_order_relaxed);
}

}  // namespace

InterruptGuard::InterruptGuard() {
  interrupted = false;
  for (const int one : EndSignals()) {
    previous_.push_back(std::signal(one, NoteInterrupt));
    if (previous_.back() == SIG_IGN) std::signal(one, SIG_IGN);
  }
}

InterruptGuard::~InterruptGuard() {
  for (std::size_t i = 0; i < previous_.size(); ++i) {
    if (previous_[i] != SIG_ERR) std::signal(EndSignals()[i], previous_[i]);
  }
}

bool Interrupted() { return interrupted.load(std::memory_order_relaxed); }

}  // namespace sondrix
