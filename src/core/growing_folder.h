#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

// An output that something else makes and that may have companions, as a library that opens its files itself:
// it grows in a folder of its own beside its place, and all that is in there takes its place together.
class GrowingFolder {
 public:
  GrowingFolder() = default;
  // The folder stands at the path's GrowingName and is empty; what an ended program left there is gone.
  // Faults as of an output at the path, and 75 where a folder stands there that no program of ours left.
  explicit GrowingFolder(std::string_view path);
  bool IsOpen() const { return !folder_.empty(); }
  // Where the output itself is to be made: its own name, in the folder.
  std::string InnerPath() const;
  // Gives all files their names beside the path, the output itself last, in place of what has them. stale:
  // paths of earlier companions that wouldn't fit the new ones; they go. On a fault all stands as before.
  void PutInPlace(std::span<const std::string> stale = {});
  // Removes the folder and all that is in it.
  void TakeAway();

 private:
  std::filesystem::path path_, folder_;
};

}  // namespace sondrix
