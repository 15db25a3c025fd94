#pragma once

#include <filesystem>

namespace sondrix {

// The folder of the real recordings, empty where it isn't there.
inline std::filesystem::path RecordingsFolder() {
  // A compiler may be given paths from the build's folder, below which the tests are run.
  for (std::filesystem::path folder = std::filesystem::absolute(__FILE__).lexically_normal().parent_path();
       folder.has_relative_path(); folder = folder.parent_path()) {
    if (std::filesystem::is_directory(folder / "shared" / "echograms")) return folder / "shared";
  }
  return {};
}

}  // namespace sondrix
