#include "core/sounding_list.h"

#include <algorithm>

namespace sondrix {

void SoundingList::Add(const Sounding& sounding) {
  const std::size_t inBlock = size_ & (BlockSize - 1);
  if (inBlock == 0) blocks_.push_back(std::make_unique_for_overwrite<Sounding[]>(BlockSize));
  blocks_.back()[inBlock] = sounding;
  ++size_;
}

void SoundingList::Finish() {
  const std::size_t inLast = size_ & (BlockSize - 1);
  if (inLast == 0) return;
  auto last = std::make_unique_for_overwrite<Sounding[]>(inLast);
  std::copy_n(blocks_.back().get(), inLast, last.get());
  blocks_.back() = std::move(last);
}

void SoundingList::Clear() {
  blocks_.clear();
  size_ = 0;
}

std::span<Sounding> SoundingList::Block(std::size_t index) {
  return {blocks_[index].get(), std::min(BlockSize, size_ - (index << BlockBits))};
}

std::span<const Sounding> SoundingList::Block(std::size_t index) const {
  return {blocks_[index].get(), std::min(BlockSize, size_ - (index << BlockBits))};
}

}  // namespace sondrix
