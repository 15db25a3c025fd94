#pragma once

#include <span>

namespace sondrix {

struct SoundingSpan;

// Whether soundings lie beside others only with latitude and longitude exchanged: nearer to one of them than
// as they stand, and within half a degree.
bool LiesBesideExchanged(const SoundingSpan& soundings, std::span<const SoundingSpan> others);

}  // namespace sondrix
