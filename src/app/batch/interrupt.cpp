#include "app/batch/interrupt.h"

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

// A script that runs the program in the background has it ignore the signal.
InterruptGuard::InterruptGuard() {
  interrupted = false;
  previous_ = std::signal(SIGINT, NoteInterrupt);
  if (previous_ == SIG_IGN) std::signal(SIGINT, SIG_IGN);
}

InterruptGuard::~InterruptGuard() {
  if (previous_ != SIG_ERR) std::signal(SIGINT, previous_);
}

bool Interrupted() { return interrupted.load(std::memory_order_relaxed); }

}  // namespace sondrix
