#include "jobs/big_buffer.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace sondrix {
namespace {

constexpr std::size_t LargePage = std::size_t{2} << 20;

}  // namespace

void BigBufferDeleter::operator()(char* bytes) const {
  ::operator delete (bytes, std::align_val_t{LargePage});
}

BigBuffer MakeBigBuffer(std::size_t size) {
  BigBuffer buffer(static_cast<char*>(::operator new (size, std::align_val_t{LargePage})));
#ifdef __linux__
  // A wish: whether the system grants it makes no difference to the run.
  if (size >= LargePage) madvise(buffer.get(), size / LargePage * LargePage, MADV_HUGEPAGE);
#endif
  return buffer;
}

}  // namespace sondrix
