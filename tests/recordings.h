#pragma once

#include <filesystem>

namespace sondrix {

// The folder of the real recordings, empty where it isn't there.
inline std::filesystem::path RecordingsFolder() {
  for (std::filesystem::path folder = std::filesystem::path(__FILE__).parent_path();
       folder.has_relative_path(); folder = folder.parent_path()) {
    if (std::filesystem::is_directory(folder / "shared" / "echograms")) return folder / "shared";
  }
  return {};
}

}  // namespace sondrix
