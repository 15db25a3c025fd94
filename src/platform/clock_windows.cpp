#include "platform/clock.h"

namespace sondrix {

// std::time_t ends in 2038 on 32-bit Windows.
std::int64_t ClockSeconds() { return _time64(nullptr); }

std::tm LocalTime(std::int64_t seconds) {
  std::tm local{};
  _localtime64_s(&local, &seconds);
  return local;
}

}  // namespace sondrix
