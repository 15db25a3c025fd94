#include "sounders/common/line_reader.h"

#include "core/fault.h"
#include "sounders/common/reading.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string>

namespace sondrix {

LineReader::LineReader(std::string_view path, const ReadWatch& watch, std::size_t blockSize)
    : file_(path, watch.isToEnd), watch_(watch), buffer_(blockSize), blockSize_(blockSize) {}

bool LineReader::Fill() {
  if (offset_ >= file_.Length()) {
    if (file_.HasChanged()) throw ChangedMeanwhile();
    return false;
  }
  if (end_ - begin_ > MaxLine && !isPassing_) {
    isPassing_ = true;
    ++longLines_;
  }
  if (isPassing_) begin_ = end_;
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  searched_ -= std::min(searched_, begin_);
  begin_ = 0;
  searched_ = std::min(searched_, end_);
  if (buffer_.size() - end_ < blockSize_) buffer_.resize(end_ + blockSize_);
  const std::size_t wanted = std::min(blockSize_, static_cast<std::size_t>(file_.Length() - offset_));
  const std::size_t got =
      file_.ReadAt(offset_, std::span(reinterpret_cast<std::uint8_t*>(buffer_.data() + end_), wanted));
  if (got < wanted) throw Fault(FaultNumber::PastEnd);
  offset_ += static_cast<std::int64_t>(got);
  end_ += got;
  watch_.Add(static_cast<std::int64_t>(got));
  return true;
}

std::optional<std::string_view> LineReader::Next() {
  isCut_ = false;
  for (;;) {
    if (skipLf_ && begin_ < end_) {
      if (buffer_[begin_] == '\n') ++begin_;
      skipLf_ = false;
      searched_ = begin_;
    }
    const char* const from = buffer_.data() + searched_;
    const auto* stop = static_cast<const char*>(std::memchr(from, '\n', end_ - searched_));
    const std::size_t length = stop != nullptr ? static_cast<std::size_t>(stop - from) : end_ - searched_;
    if (const void* cr = std::memchr(from, '\r', length); cr != nullptr) stop = static_cast<const char*>(cr);
    if (stop != nullptr) {
      const std::string_view line(buffer_.data() + begin_,
                                  static_cast<std::size_t>(stop - buffer_.data()) - begin_);
      skipLf_ = *stop == '\r';
      begin_ = searched_ = static_cast<std::size_t>(stop - buffer_.data()) + 1;
      if (isPassing_) {
        isPassing_ = false;
        continue;
      }
      return line;
    }
    searched_ = end_;
    if (Fill()) continue;
    if (begin_ == end_ || isPassing_) {
      begin_ = end_;
      return std::nullopt;
    }
    const std::string_view line(buffer_.data() + begin_, end_ - begin_);
    begin_ = searched_ = end_;
    isCut_ = true;
    return line;
  }
}

}  // namespace sondrix
