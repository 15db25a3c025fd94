#pragma once

#include <cstddef>

namespace sondrix {

// The settings of a run stand as bytes in front of its source.
inline constexpr std::size_t DrawLength = 32;

}  // namespace sondrix
