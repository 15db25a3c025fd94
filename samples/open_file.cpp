#include "samples/open_file.h"

#include <filesystem>

namespace sondrix {

SampleFile OpenSample(const std::string& path) {
#ifdef _WIN32
  const std::filesystem::path wide(std::u8string(path.begin(), path.end()));
  return SampleFile(_wfopen(wide.c_str(), L"wb"));
#else
  return SampleFile(std::fopen(path.c_str(), "wb"));
#endif
}

}  // namespace sondrix
