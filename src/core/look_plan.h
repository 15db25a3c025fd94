#pragma once

#include <chrono>
#include <cstdint>

namespace sondrix {

// How a file of any size is looked at in a set time: from its start for a third of it, then at its end, then
// in the middle of what lies between, and so on, ever closer.
struct LookPlan {
  using Clock = std::chrono::steady_clock;
  static constexpr std::int64_t PieceLength = 128 * 1024;  // bytes that are looked at in one place

  Clock::time_point startEnd, end;
  explicit LookPlan(std::chrono::milliseconds time)
      : startEnd(Clock::now() + time / 3), end(Clock::now() + time) {}
  bool MayStart() const { return Clock::now() < startEnd; }
  bool MayGoOn() const { return Clock::now() < end; }

  // Calls look with the places behind position seen of a file of that length.
  template <typename Look>
  void VisitPlaces(std::int64_t seen, std::int64_t length, Look&& look) const {
    const std::int64_t last = length - PieceLength;
    look(last > seen ? last : seen);
    for (std::int64_t share = length / 2; share >= 2 * PieceLength; share /= 2) {
      for (std::int64_t place = share; place + PieceLength <= last; place += 2 * share) {
        if (!MayGoOn()) return;
        if (place > seen) look(place);
      }
    }
  }
};

}  // namespace sondrix
