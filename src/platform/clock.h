#pragma once

#include <cstdint>
#include <ctime>

namespace sondrix {

// Seconds since 01/01/1970 00:00:00 UTC, by the machine's clock.
std::int64_t ClockSeconds();

// Such seconds as local time.
std::tm LocalTime(std::int64_t seconds);

}  // namespace sondrix
