#include "core/sounding_list.h"

#include <algorithm>

namespace sondrix {

void SoundingList::Add(const Sounding& sounding) {
  const std::size_t inBlock = size_ & (BlockSize - 1);
  if (inBlock == 0) {
    blocks_.push_back(std::make_unique_for_overwrite<Sounding[]>(BlockSize));
    room_ = BlockSize;
  } else if (inBlock == room_) {
    Resize(BlockSize);
  }
  blocks_.back()[inBlock] = sounding;
  ++size_;
}

void SoundingList::Finish() {
  const std::size_t inLast = size_ & (BlockSize - 1);
  if (inLast != 0) Resize(inLast);
}

void SoundingList::Resize(std::size_t room) {
  auto last = std::make_unique_for_overwrite<Sounding[]>(room);
  std::copy_n(blocks_.back().get(), size_ & (BlockSize - 1), last.get());
  blocks_.back() = std::move(last);
  room_ = room;
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
