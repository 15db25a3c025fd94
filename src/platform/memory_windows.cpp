#include "platform/memory.h"

namespace sondrix {

// Large pages take a right here that users don't have.
void WishLargePages(void*, std::size_t) {}

}  // namespace sondrix
