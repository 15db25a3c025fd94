#include "jobs/text_body.h"

#include "core/outputs.h"
#include "core/settings.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace sondrix {
namespace {

constexpr std::size_t FirstPiece = std::size_t{64} << 10;
constexpr std::size_t LargestPiece = std::size_t{4} << 20;

}  // namespace

void TextBody::Add(std::string_view record) {
  while (!record.empty()) {
    if (pieces_.empty() || pieces_.back().size == pieces_.back().capacity) {
      const std::size_t next = pieces_.empty() ? FirstPiece : pieces_.back().capacity * 2;
      const std::size_t capacity = std::min(next, LargestPiece);
      pieces_.push_back({MakeBigBuffer(capacity), 0, capacity});
    }
    Piece& piece = pieces_.back();
    const std::size_t count = std::min(record.size(), piece.capacity - piece.size);
    std::memcpy(piece.bytes.get() + piece.size, record.data(), count);
    piece.size += count;
    record.remove_prefix(count);
  }
}

std::vector<std::string_view> TextBody::Parts() const {
  std::vector<std::string_view> parts;
  for (const Piece& piece : pieces_) parts.emplace_back(piece.bytes.get(), piece.size);
  return parts;
}

void WriteBodies(Run& run, std::initializer_list<BodyFile> files) {
  const std::string stem = run.settings.TargetPath + run.settings.TargetName;
  const auto isWanted = [](const BodyFile& file) { return !file.isOptional || !file.body.IsEmpty(); };
  for (const BodyFile& file : files) {
    if (isWanted(file)) run.outputs.Guard(stem + std::string(file.suffix));
  }
  for (const BodyFile& file : files) {
    if (!isWanted(file)) continue;
    std::vector<std::string_view> parts = file.body.Parts();
    parts.insert(parts.begin(), file.head);
    run.outputs.WriteBytesF(stem + std::string(file.suffix), parts, run.window);
  }
}

}  // namespace sondrix
