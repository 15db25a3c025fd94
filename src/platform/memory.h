#pragma once

#include <cstddef>

namespace sondrix {

inline constexpr std::size_t LargePage = std::size_t{2} << 20;  // bytes

// A wish: to have memory that begins at a large page in such pages. Whether the system grants it makes no
// difference to what the memory holds.
void WishLargePages(void* bytes, std::size_t size);

}  // namespace sondrix
