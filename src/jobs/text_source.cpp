#include "jobs/text_source.h"

#include "core/fault.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <span>
#include <utility>

namespace sondrix {
namespace {

const char* FindByte(std::string_view text, char byte) {
  return static_cast<const char*>(std::memchr(text.data(), byte, text.size()));
}

constexpr std::uint64_t EachByte = 0x0101010101010101U;
constexpr std::uint64_t LowBits = EachByte * 0x7FU;

// The highest bit of each byte of word that equals the one that pattern repeats, and no other.
std::uint64_t BytesEqual(std::uint64_t word, std::uint64_t pattern) {
  const std::uint64_t difference = word ^ pattern;
  return ~(((difference & LowBits) + LowBits) | difference | LowBits);
}

}  // namespace

TextSource::TextSource(std::string_view path, LineStart start, std::size_t blockSize,
                       std::function<bool()> isToEnd)
    : file_(path, std::move(isToEnd)), start_(start), blockSize_(blockSize) {
  if (file_.Length() == 0) return;
  current_ = {std::make_unique_for_overwrite<char[]>(blockSize_), blockSize_};
  FindTerminator();
  lineCount_ = CountTerminators() + 1;
  unread_ = std::string_view(current_.bytes.get(), 0);
}

std::string_view TextSource::ReadBlock(std::int64_t offset, char* target, std::size_t capacity) {
  const auto rest = static_cast<std::uint64_t>(file_.Length() - offset);
  const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(rest, capacity));
  const std::span bytes(reinterpret_cast<std::uint8_t*>(target), length);
  if (file_.ReadAt(offset, bytes) < length) throw Fault(FaultNumber::PastEnd);
  return {target, length};
}

void TextSource::FindTerminator() {
  for (std::int64_t offset = 0; offset < file_.Length();) {
    const std::string_view text = ReadBlock(offset, current_.bytes.get(), blockSize_);
    const std::size_t at = text.find_first_of("\r\n");
    terminator_ = at == std::string_view::npos ? text.back() : text[at];
    if (at != std::string_view::npos) return;
    offset += static_cast<std::int64_t>(text.size());
  }
}

std::int64_t TextSource::CountTerminators() {
  std::int64_t count = 0;
  std::size_t length = 0;  // of the line so far
  for (std::int64_t offset = 0; offset < file_.Length();) {
    std::string_view text = ReadBlock(offset, current_.bytes.get(), blockSize_);
    offset += static_cast<std::int64_t>(text.size());
    for (; const char* end = FindByte(text, terminator_); ++count) {
      const std::size_t cut = static_cast<std::size_t>(end - text.data()) + 1;
      longest_ = std::max(longest_, length + cut);
      length = 0;
      text.remove_prefix(cut);
    }
    length += text.size();
  }
  longest_ = std::max(longest_, length);
  return count;
}

// Reads on behind the unread part, which is shorter than the longest line: in the same block if a long line
// fills it from its start, else in the other one. The block before stays as it is, and so does the one with
// the last line that isn't empty, since a row may be taken a second time.
void TextSource::ReadOn() {
  char* start = current_.bytes.get();
  const std::size_t held = unread_.size();
  const bool inPlace = held > 0 && unread_.data() == start && current_.capacity - held >= blockSize_;
  if (!inPlace) {
    const auto holds = [this](const Block& block) {
      const std::less<const char*> before;
      return lastText_ && block.bytes && !before(lastText_, block.bytes.get()) &&
             before(lastText_, block.bytes.get() + block.capacity);
    };
    if (holds(previous_)) retained_ = std::exchange(previous_, {});
    // Room for the longest line costs memory only where such a line comes.
    const std::size_t capacity = 2 * longest_ <= blockSize_ ? blockSize_ : longest_ + 2 * blockSize_;
    if (!previous_.bytes || previous_.capacity < capacity) {
      previous_ = {};
      previous_ = {std::make_unique_for_overwrite<char[]>(capacity), capacity};
    }
    start = previous_.bytes.get();
    if (held > 0) std::memcpy(start, unread_.data(), held);
    std::swap(current_, previous_);
  }
  const std::string_view added =
      ReadBlock(position_, start + held, std::min(blockSize_, current_.capacity - held));
  position_ += static_cast<std::int64_t>(added.size());
  unread_ = std::string_view(start, held + added.size());
}

std::optional<std::string_view> TextSource::Next() {
  if (linesTaken_ == lineCount_) return std::nullopt;
  ++linesTaken_;
  const char* end = FindByte(unread_, terminator_);
  while (!end && position_ < file_.Length()) {
    const std::size_t searched = unread_.size();
    if (searched >= longest_) throw Fault(FaultNumber::DeviceIo);
    ReadOn();
    end = FindByte(unread_.substr(searched), terminator_);
  }
  const std::size_t length = end ? static_cast<std::size_t>(end - unread_.data()) : unread_.size();
  const bool isLast = linesTaken_ == lineCount_;
  if (isLast != (end == nullptr) || length > longest_) throw Fault(FaultNumber::DeviceIo);
  std::string_view line = unread_.substr(0, length);
  unread_.remove_prefix(end ? length + 1 : length);
  const bool cut = start_ == LineStart::CutLf ? line.starts_with('\n') : terminator_ == '\r';
  if (cut && !line.empty()) line.remove_prefix(1);
  if (!line.empty()) lastText_ = line.data();
  return line;
}

void TextSource::Finish() {
  if (file_.HasChanged()) throw Fault(FaultNumber::DeviceIo);
  file_.Close();
}

std::optional<char> SeparatorOf(std::string_view line) {
  for (const char separator : {';', ','}) {
    if (line.find(separator) != std::string_view::npos) return separator;
  }
  return std::nullopt;
}

// Columns are short, so that a search of eight bytes at a time beats one that starts anew for each column.
void Columns::Split(std::string_view line, char separator, std::size_t most) {
  const std::uint64_t pattern = EachByte * static_cast<std::uint8_t>(separator);
  const char* begin = line.data();
  const char* const end = begin + line.size();
  const char* at = begin;
  count_ = 0;
  const auto cutAt = [&](const char* cut) {
    texts_[count_++] = std::string_view(begin, static_cast<std::size_t>(cut - begin));
    begin = cut == end ? end : cut + 1;
    return count_ < most;
  };
  while (std::endian::native == std::endian::little && end - at >= 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    for (std::uint64_t cuts = BytesEqual(word, pattern); cuts != 0; cuts &= cuts - 1) {
      if (!cutAt(at + std::countr_zero(cuts) / 8)) return;
    }
    at += 8;
  }
  for (; at < end; ++at) {
    if (*at == separator && !cutAt(at)) return;
  }
  cutAt(end);
}

void Columns::Widen() {
  while (count_ < Capacity) texts_[count_++] = {};
}

void Columns::ThrowNoColumn() { throw Fault(FaultNumber::Subscript); }

void Columns::Set(std::size_t index, std::string_view text) {
  if (index >= count_) ThrowNoColumn();
  texts_[index] = text;
}

}  // namespace sondrix
