#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace sondrix {

class InputFile;

// A text file line by line, in memory for the longest line only. A line ends at CR LF, at a CR alone or at
// the end of the file; an LF without a CR before it belongs to its line.
class LineInput {
 public:
  static constexpr std::size_t DefaultBlock = 0x40000;

  // Reads file from its start, blockSize bytes at a time. The file has to outlive this.
  explicit LineInput(InputFile& file, std::size_t blockSize = DefaultBlock)
      : file_(file), blockSize_(blockSize) {}
  // The next line without its end, valid until the next call; empty behind the last line.
  // Faults as of the operating system; at the end of the file fault 62 where it has become shorter meanwhile,
  // fault 57 where it has changed otherwise. EndAsked as of the file.
  std::optional<std::string_view> Next();

 private:
  // Puts another block behind the bytes in hand; false at the end of the file.
  bool Fill();

  // Grown in place where the system can, so that a long line isn't held twice.
  struct Free {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
  };

  InputFile& file_;
  std::size_t blockSize_;
  std::int64_t offset_ = 0;                       // of the next block in the file
  std::unique_ptr<std::uint8_t[], Free> buffer_;  // the bytes in hand lie in [begin_, end_)
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace sondrix
