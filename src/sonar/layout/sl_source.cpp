#include "sonar/layout/sl_source.h"

#include "core/fault.h"

#include <algorithm>
#include <cstring>

namespace sondrix {

SlSource::SlSource(std::string_view path, std::size_t blockSize)
    : file_(path), blockSize_(static_cast<std::int64_t>(blockSize)) {
  const std::size_t room = MaxRequest + std::max(blockSize, MaxRequest + std::size_t{PageSize}) + 1;
  storage_.reset(static_cast<std::uint8_t*>(::operator new[](room, std::align_val_t(PageSize))));
}

void SlSource::Require(std::int64_t index, std::int64_t count) const {
  if (index < 0 || count < 0 || BaseOffset + index + count > FileLength() + 1) {
    throw Fault(FaultNumber::Subscript);
  }
}

void SlSource::Refill(std::int64_t from, std::size_t count) {
  Require(from - BaseOffset, static_cast<std::int64_t>(count));
  // What is still needed of the block before moves to the end of the room in front of the next one, so that
  // every block is read on from the last, as whole pages of the file into whole pages of memory.
  const std::int64_t readEnd = std::min(windowEnd_, FileLength());
  const bool overlaps = from >= windowStart_ && from < readEnd;
  const std::int64_t readStart = overlaps ? readEnd : from / PageSize * PageSize;
  const std::int64_t kept = overlaps ? readEnd - from : 0;
  const std::int64_t needed = from + static_cast<std::int64_t>(count) - readStart;
  const std::int64_t length = std::min(std::max(needed, blockSize_), FileLength() - readStart);

  std::uint8_t* block = storage_.get() + MaxRequest;
  if (kept > 0) std::memmove(block - kept, window_ + (from - windowStart_), static_cast<std::size_t>(kept));
  windowStart_ = windowEnd_ = 0;
  const std::span target(block, static_cast<std::size_t>(length));
  if (file_.ReadAt(readStart, target) != target.size()) throw Fault(FaultNumber::PastEnd);
  window_ = block - kept;
  windowStart_ = readStart - kept;
  windowEnd_ = readStart + length;
  if (windowEnd_ == FileLength()) {
    block[length] = 0;
    ++windowEnd_;
  }
}

}  // namespace sondrix
