#include "platform/memory.h"

#include <sys/mman.h>

namespace sondrix {

void WishLargePages(void* bytes, std::size_t size) {
  if (size >= LargePage) madvise(bytes, size / LargePage * LargePage, MADV_HUGEPAGE);
}

}  // namespace sondrix
