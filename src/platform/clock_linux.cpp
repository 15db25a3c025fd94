#include "platform/clock.h"

namespace sondrix {

std::int64_t ClockSeconds() { return std::time(nullptr); }

std::tm LocalTime(std::int64_t seconds) {
  std::tm local{};
  const auto time = static_cast<std::time_t>(seconds);
  localtime_r(&time, &local);
  return local;
}

}  // namespace sondrix
