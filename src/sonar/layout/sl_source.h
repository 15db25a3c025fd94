#pragma once

#include "core/files.h"

#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <string_view>

namespace sondrix {

// The bytes of an echogram, read through a window that moves forward. They are addressed as an array of
// at most ChunkLength + 1 bytes that begins at BaseOffset of the file; the reader starts a new chunk near its
// end, which is what gives the seam its frame processed twice.
class SlSource {
 public:
  static constexpr std::int64_t ChunkLength = 200'000'000;
  // Large enough to spread the cost of a read, small enough to stay in a processor's cache.
  static constexpr std::size_t DefaultBlock = 256 * 1024;

  // More than a frame has.
  static constexpr std::size_t MaxRequest = 64 * 1024;

  explicit SlSource(std::string_view path, std::size_t blockSize = DefaultBlock);

  std::int64_t FileLength() const { return file_.Length(); }
  std::int64_t FilePosition() const { return BaseOffset + Pos; }

  // count bytes from an index of the array, at most MaxRequest, valid until the next call. One zero byte
  // stands behind the end of the file; beyond it is fault 9. A file that has become shorter since it was
  // opened is fault 62.
  std::span<const std::uint8_t> Bytes(std::int64_t index, std::size_t count) {
    const std::int64_t from = BaseOffset + index;
    if (from < windowStart_ || from + static_cast<std::int64_t>(count) > windowEnd_) Refill(from, count);
    return {window_ + (from - windowStart_), count};
  }

  // Whether count bytes from an index lie inside the file.
  bool Has(std::int64_t index, std::size_t count) const {
    return BaseOffset + index + static_cast<std::int64_t>(count) <= FileLength();
  }

  // Fault 9 if count bytes from an index aren't all there: for bytes that nobody reads.
  void Require(std::int64_t index, std::int64_t count) const;

  // Whether the file isn't any more what was opened.
  bool HasChanged() const { return file_.HasChanged(); }
  void Close() { file_.Close(); }

  std::int64_t BaseOffset = 0;    // file offset of index 0
  std::int64_t Pos = FirstFrame;  // index of the current frame
  static constexpr std::int64_t FirstFrame = 8;

 private:
  // The system copies a page of a file fastest into a page of memory.
  static constexpr std::int64_t PageSize = 4096;
  struct PageDelete {
    void operator()(std::uint8_t* bytes) const { ::operator delete[](bytes, std::align_val_t(PageSize)); }
  };

  void Refill(std::int64_t from, std::size_t count);

  InputFile file_;
  std::int64_t blockSize_;
  std::unique_ptr<std::uint8_t[], PageDelete> storage_;  // MaxRequest bytes, then a block
  const std::uint8_t* window_ = nullptr;                 // into storage_
  std::int64_t windowStart_ = 0, windowEnd_ = 0;         // file offsets of what the window holds
};

}  // namespace sondrix
