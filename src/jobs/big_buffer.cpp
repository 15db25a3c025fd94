#include "jobs/big_buffer.h"

#include "platform/memory.h"

#include <new>

namespace sondrix {

void BigBufferDeleter::operator()(char* bytes) const {
  ::operator delete (bytes, std::align_val_t{LargePage});
}

BigBuffer MakeBigBuffer(std::size_t size) {
  BigBuffer buffer(static_cast<char*>(::operator new (size, std::align_val_t{LargePage})));
  WishLargePages(buffer.get(), size);
  return buffer;
}

}  // namespace sondrix
