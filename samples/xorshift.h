#pragma once

#include <cstdint>

namespace sondrix {

// Marsaglia's xorshift32: the same numbers on every machine, so that a sample is the same file everywhere.
class XorShift {
 public:
  explicit XorShift(std::uint32_t seed) : state_(seed == 0 ? 1U : seed) {}
  std::uint32_t Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_;
  }
  // 0 up to but not including below, which is at most 65536.
  std::uint32_t Below(std::uint32_t below) { return (Next() >> 16) * below >> 16; }
  // -1 up to but not including 1.
  double Signed() { return static_cast<double>(Next() >> 8) / 8388608.0 - 1.0; }

 private:
  std::uint32_t state_;
};

}  // namespace sondrix
