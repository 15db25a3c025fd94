#include "jobs/line_input.h"

#include "core/fault.h"
#include "core/files.h"

#include <cstring>
#include <new>

namespace sondrix {

bool LineInput::Fill() {
  const std::size_t inHand = end_ - begin_;
  if (begin_ > 0) std::memmove(buffer_.get(), buffer_.get() + begin_, inHand);
  begin_ = 0;
  end_ = inHand;
  // A line that outgrows the buffer doubles it, so that each of its bytes is moved a few times at most.
  if (capacity_ < inHand + blockSize_) {
    const std::size_t capacity = inHand * 2 + blockSize_;
    void* const grown = std::realloc(buffer_.get(), capacity);
    if (grown == nullptr) throw std::bad_alloc();
    static_cast<void>(buffer_.release());
    buffer_.reset(static_cast<std::uint8_t*>(grown));
    capacity_ = capacity;
  }
  const std::size_t count = file_.ReadAt(offset_, {buffer_.get() + end_, blockSize_});
  if (count == 0 && offset_ < file_.Length()) throw Fault(FaultNumber::PastEnd);
  if (count == 0 && file_.HasChanged()) throw Fault(FaultNumber::DeviceIo);
  offset_ += static_cast<std::int64_t>(count);
  end_ += count;
  return count > 0;
}

std::optional<std::string_view> LineInput::Next() {
  std::size_t searched = 0;  // bytes in hand that hold no CR
  while (true) {
    const std::size_t left = end_ - begin_ - searched;
    const auto* cr =
        left == 0
            ? nullptr
            : static_cast<const std::uint8_t*>(std::memchr(buffer_.get() + begin_ + searched, '\r', left));
    if (cr == nullptr) {
      searched += left;
      if (Fill()) continue;
      if (searched == 0) return std::nullopt;
    }
    std::size_t length = searched;
    std::size_t ending = 0;
    if (cr != nullptr) {
      length = static_cast<std::size_t>(cr - buffer_.get()) - begin_;
      if (begin_ + length + 1 == end_) Fill();  // whether an LF follows
      ending = begin_ + length + 1 < end_ && buffer_[begin_ + length + 1] == '\n' ? 2 : 1;
    }
    const std::string_view line(reinterpret_cast<const char*>(buffer_.get()) + begin_, length);
    begin_ += length + ending;
    return line;
  }
}

}  // namespace sondrix
