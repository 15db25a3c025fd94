#pragma once

#include "core/sounding.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace sondrix {

// Soundings in the order in which they were added. They lie in blocks, so that a list grows without moving
// what it holds and without more memory than a block beyond it.
class SoundingList {
 public:
  static constexpr std::size_t BlockBits = 14;
  static constexpr std::size_t BlockSize = std::size_t{1} << BlockBits;

  void Add(const Sounding& sounding);
  // Gives back the room behind the last sounding, when no more will come. If one comes all the same, its
  // block is made anew.
  void Finish();
  void Clear();

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  Sounding& operator[](std::size_t index) { return blocks_[index >> BlockBits][index & (BlockSize - 1)]; }
  const Sounding& operator[](std::size_t index) const {
    return blocks_[index >> BlockBits][index & (BlockSize - 1)];
  }

  // The blocks in order; all but the last hold BlockSize.
  std::size_t BlockCount() const { return blocks_.size(); }
  std::span<Sounding> Block(std::size_t index);
  std::span<const Sounding> Block(std::size_t index) const;

 private:
  void Resize(std::size_t room);  // the last block, which isn't full

  std::vector<std::unique_ptr<Sounding[]>> blocks_;
  std::size_t size_ = 0;
  std::size_t room_ = 0;  // of the last block, in soundings
};

}  // namespace sondrix
