#pragma once

#include <cstddef>
#include <memory>

namespace sondrix {

struct BigBufferDeleter {
  void operator()(char* bytes) const;
};

// Plain memory that begins unset. A large one lies on large pages where the system has them, which spares the
// filling of a whole text the greater part of its page faults.
using BigBuffer = std::unique_ptr<char[], BigBufferDeleter>;

// Throws std::bad_alloc where there isn't so much.
BigBuffer MakeBigBuffer(std::size_t size);

}  // namespace sondrix
