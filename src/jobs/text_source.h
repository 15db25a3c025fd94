#pragma once

#include "core/files.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace sondrix {

// What a line loses at its start, where the LF of a CR LF stands if lines are cut at the CR.
enum class LineStart {
  CutWithCr,  // where lines are cut at CR, the first character, whatever it is
  CutLf,      // an LF, and nothing else
};

// A text source of 8-bit bytes, cut into lines at its terminator: the first CR or LF, or the last byte of a
// source that has neither. Behind a last terminator stands one more line, which is empty. The source is read
// twice, block by block, first to count its lines, and has to be the same both times.
class TextSource {
 public:
  // Faults as of the operating system, here and in Next; fault 62 where the file becomes shorter meanwhile,
  // fault 57 where its lines aren't those that were counted. Both throw EndAsked once isToEnd says so.
  TextSource(std::string_view path, LineStart start, std::size_t blockSize = DefaultBlock,
             std::function<bool()> isToEnd = {});

  std::int64_t LineCount() const { return lineCount_; }  // 0 for an empty source

  // The next line without its terminator; nothing behind the last. The view lives until a later line that
  // isn't empty has been taken.
  std::optional<std::string_view> Next();
  // Closes the source. Fault 57 where it isn't what it was at its opening.
  void Finish();

  static constexpr std::size_t DefaultBlock = std::size_t{256} << 10;

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t capacity = 0;
  };

  void FindTerminator();
  std::int64_t CountTerminators();
  std::string_view ReadBlock(std::int64_t offset, char* target, std::size_t capacity);
  void ReadOn();

  InputFile file_;
  LineStart start_;
  std::size_t blockSize_;
  char terminator_ = '\n';
  std::int64_t lineCount_ = 0;
  std::size_t longest_ = 0;  // bytes of a line with its terminator
  std::int64_t linesTaken_ = 0;
  std::int64_t position_ = 0;            // in the file, of what hasn't been read yet
  Block current_, previous_, retained_;  // the unread part lies in the current block
  std::string_view unread_;
  const char* lastText_ = nullptr;  // the last line that isn't empty, in one of the blocks
};

// ";" if the line holds one, else "," if it holds one.
std::optional<char> SeparatorOf(std::string_view line);

// The first columns of a line, without a copy of their texts.
class Columns {
 public:
  static constexpr std::size_t Capacity = 16;

  // Cuts the line at each separator; columns behind the first `most` (up to Capacity) are left unread.
  void Split(std::string_view line, char separator, std::size_t most);
  // Adds empty columns up to the capacity.
  void Widen();
  std::size_t Count() const { return count_; }
  // Both with fault 9 where there is no such column.
  std::string_view At(std::size_t index) const {
    if (index >= count_) ThrowNoColumn();
    return texts_[index];
  }
  void Set(std::size_t index, std::string_view text);

 private:
  [[noreturn]] static void ThrowNoColumn();

  std::array<std::string_view, Capacity> texts_;
  std::size_t count_ = 0;
};

}  // namespace sondrix
