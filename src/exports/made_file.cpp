#include "exports/made_file.h"

#include "core/fault.h"
#include "core/files.h"
#include "exports/gdal_handles.h"

#include <cerrno>
#include <cpl_vsi.h>
#include <filesystem>
#include <system_error>
#include <vector>

namespace sondrix {
namespace {

// Puts some bytes behind the file and takes them away again.
void ThrowIfFull(const std::string& path) {
  VSIStatBufL state;
  const bool isThere = VSIStatL(path.c_str(), &state) == 0;
  VSILFILE* const file = VSIFOpenL(path.c_str(), "ab");
  if (file == nullptr) return;
  constexpr std::size_t trialBytes = 64 << 10;  // more than a block of any file system
  const std::vector<char> trial(trialBytes);
  errno = 0;
  bool isTaken = VSIFWriteL(trial.data(), 1, trial.size(), file) == trial.size() && VSIFFlushL(file) == 0;
  int error = errno;
  if (VSIFCloseL(file) != 0 && isTaken) {
    isTaken = false;
    error = errno;
  }
  std::error_code ignored;
  if (isThere) {
    std::filesystem::resize_file(PathOf(path), static_cast<std::uintmax_t>(state.st_size), ignored);
  } else {
    VSIUnlink(path.c_str());
  }
  if (isTaken) return;
  throw Fault(error == 0 ? FaultNumber::DiskFull
                         : FaultOfError(std::error_code(error, std::generic_category())));
}

}  // namespace

void MakeFile(const std::string& path, const std::function<void()>& make) {
  const GdalMessages quiet;
  try {
    make();
  } catch (const CantExport&) {
    ThrowIfFull(path);
    throw;
  }
  ThrowIfFull(path);
}

}  // namespace sondrix
