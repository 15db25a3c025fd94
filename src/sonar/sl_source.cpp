#include "sonar/sl_source.h"

#include "core/fault.h"

#include <algorithm>

namespace sondrix {

SlSource::SlSource(std::string_view path, std::size_t blockSize) : file_(path), blockSize_(blockSize) {}

void SlSource::Require(std::int64_t index, std::int64_t count) const {
  if (index < 0 || count < 0 || BaseOffset + index + count > FileLength() + 1) {
    throw Fault(FaultNumber::Subscript);
  }
}

void SlSource::Refill(std::int64_t from, std::size_t count) {
  Require(from - BaseOffset, static_cast<std::int64_t>(count));
  const auto rest = static_cast<std::size_t>(FileLength() - from);
  const std::size_t wanted = std::min(std::max(count, blockSize_), rest);
  window_.resize(std::max(window_.size(), wanted + 1));
  if (file_.ReadAt(from, std::span(window_.data(), wanted)) != wanted) throw Fault(FaultNumber::PastEnd);
  windowStart_ = from;
  windowEnd_ = from + static_cast<std::int64_t>(wanted);
  if (windowEnd_ == FileLength()) {
    window_[wanted] = 0;
    ++windowEnd_;
  }
}

}  // namespace sondrix
