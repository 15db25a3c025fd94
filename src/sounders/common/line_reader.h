#pragma once

#include "core/files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace sondrix {

struct ReadWatch;

// The lines of a text, ended by LF, CR LF or CR alone, read in blocks. What a line holds is bytes of whatever
// encoding.
class LineReader {
 public:
  static constexpr std::size_t DefaultBlock = 256 * 1024;
  // More than a table of 100,000 columns has. A longer line isn't held: it is passed over.
  static constexpr std::size_t MaxLine = 4 * 1024 * 1024;

  // Faults as of the operating system.
  LineReader(std::string_view path, const ReadWatch& watch, std::size_t blockSize = DefaultBlock);

  // The next line without its end, valid until the next call; none behind the last. The last line may have no
  // end. EndAsked when the watch says so; fault 62 when the file turns out shorter than it was,
  // ChangedMeanwhile at its end.
  std::optional<std::string_view> Next();

  std::uint64_t LongLines() const { return longLines_; }
  // Whether the line given last had no line end.
  bool IsCut() const { return isCut_; }

 private:
  bool Fill();

  InputFile file_;
  const ReadWatch& watch_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0, end_ = 0, searched_ = 0;  // of what the buffer holds and isn't given yet
  std::int64_t offset_ = 0;                         // of the file, of the next read
  std::size_t blockSize_;
  std::uint64_t longLines_ = 0;
  bool isPassing_ = false;  // inside a long line
  bool isCut_ = false;
  bool skipLf_ = false;  // the last line ended with the CR of a CR LF
};

}  // namespace sondrix
