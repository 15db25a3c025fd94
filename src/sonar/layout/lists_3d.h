#pragma once

#include "core/entry_3d.h"
#include "sonar/layout/sl_format.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace sondrix {

// A 3D frame holds two lists of soundings in place of samples, one for each side of the boat. The lengths of
// the lists stand in the payload's head; the left list begins at LeftListStart of the payload and the right
// one follows it.

inline constexpr std::int32_t ListsEnd3D =
    HeaderLength3D + 0x0E;                     // first byte behind the lengths, from the frame's start
inline constexpr float LowerLimit3D = 210.0F;  // feet, whatever a 3D frame says
inline constexpr std::int64_t LeftListStart = 0x4C;

// In bytes.
struct SlLists3D {
  std::int16_t LeftBytes = 0, RightBytes = 0;
};

// The lengths of a frame's two lists; bytes, from the frame's start, are at least ListsEnd3D.
SlLists3D SlSamples3D(std::span<const std::uint8_t> bytes);

// How many entries a list of that length holds: its first 4 and its last 4 bytes belong to none. None
// below 12.
int EntriesOf(std::int16_t listBytes);

// Replaces entries by those of the list of that length at listStart of the payload, but for those from the
// first on that doesn't lie inside the payload.
void DecodeList3D(std::span<const std::uint8_t> payload, std::int64_t listStart, std::int16_t listBytes,
                  std::vector<Entry3D>& entries);

// The distance in the last 8 bytes of that list; nothing where they don't lie inside the payload.
std::optional<float> LastDistance3D(std::span<const std::uint8_t> payload, std::int64_t listStart,
                                    std::int16_t listBytes);

}  // namespace sondrix
