#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace sondrix {

// One way in which an echogram goes bad.
struct Damage {
  std::string_view Name;
  std::string_view What;
  int FormatWord;  // the clean echogram that it is meant for
  std::size_t Amount;
  std::vector<std::uint8_t> (*Make)(std::span<const std::uint8_t> clean, std::size_t amount);

  // The bad bytes. clean: an undamaged echogram of at least 12 frames, such as CleanEchogram(FormatWord).
  std::vector<std::uint8_t> Apply(std::span<const std::uint8_t> clean) const { return Make(clean, Amount); }
};

// All damages.
std::span<const Damage> Damages();

// The damage of that name, null where there is none.
const Damage* DamageOf(std::string_view name);

// A small sound echogram: 40 pings of Primary and Downscan, Primary first, 1920 samples each. A damage in the
// middle of it befalls a Downscan frame, the last frame is one too.
std::vector<std::uint8_t> CleanEchogram(int formatWord);

}  // namespace sondrix
