#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace sondrix {

// Little-endian words of any alignment.

inline std::uint16_t U16At(const std::uint8_t* bytes) {
  return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

inline std::uint32_t U32At(const std::uint8_t* bytes) {
  std::uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  if constexpr (std::endian::native == std::endian::big) {
    word = (word >> 24) | ((word >> 8) & 0xFF00U) | ((word << 8) & 0xFF0000U) | (word << 24);
  }
  return word;
}

inline std::int16_t I16At(const std::uint8_t* bytes) { return static_cast<std::int16_t>(U16At(bytes)); }
inline std::int32_t I32At(const std::uint8_t* bytes) { return static_cast<std::int32_t>(U32At(bytes)); }
inline float FloatAt(const std::uint8_t* bytes) { return std::bit_cast<float>(U32At(bytes)); }

}  // namespace sondrix
