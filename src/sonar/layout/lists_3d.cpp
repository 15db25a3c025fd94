#include "sonar/layout/lists_3d.h"

#include "core/rounding.h"
#include "sonar/layout/words.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr std::size_t LeftLengthAt = HeaderLength3D + 4;
constexpr std::size_t RightLengthAt = HeaderLength3D + 8;
constexpr std::int64_t EntrySize = 8;
constexpr std::int64_t EntryDepthAt = 4;
constexpr std::int64_t EntryDistAt = 8;
constexpr std::int64_t FloatSize = 4;

bool IsInside(std::span<const std::uint8_t> payload, std::int64_t at) {
  return at >= 0 && at + FloatSize <= static_cast<std::int64_t>(payload.size());
}

}  // namespace

SlLists3D SlSamples3D(std::span<const std::uint8_t> bytes) {
  return {I16At(bytes.data() + LeftLengthAt), I16At(bytes.data() + RightLengthAt)};
}

int EntriesOf(std::int16_t listBytes) {
  return static_cast<int>(std::max<std::int64_t>(ToWhole(listBytes / 8.0 - 2) + 1, 0));
}

void DecodeList3D(std::span<const std::uint8_t> payload, std::int64_t listStart, std::int16_t listBytes,
                  std::vector<Entry3D>& entries) {
  entries.clear();
  const int count = EntriesOf(listBytes);
  for (int i = 0; i < count; ++i) {
    const std::int64_t base = listStart + EntrySize * i;
    if (!IsInside(payload, base + EntryDepthAt) || !IsInside(payload, base + EntryDistAt)) return;
    entries.push_back(
        {FloatAt(payload.data() + base + EntryDepthAt), FloatAt(payload.data() + base + EntryDistAt)});
  }
}

std::optional<float> LastDistance3D(std::span<const std::uint8_t> payload, std::int64_t listStart,
                                    std::int16_t listBytes) {
  const std::int64_t at = listStart + listBytes - EntrySize;
  if (!IsInside(payload, at)) return std::nullopt;
  return FloatAt(payload.data() + at);
}

}  // namespace sondrix
