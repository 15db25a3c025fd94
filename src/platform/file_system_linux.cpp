#include "platform/file_system.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {errno, std::generic_category()}; }

FileState StateFrom(const struct stat& status) {
  constexpr std::int64_t nanoseconds = 1'000'000'000;
  return {{static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)},
          static_cast<std::int64_t>(status.st_size),
          static_cast<std::int64_t>(status.st_mtim.tv_sec) * nanoseconds + status.st_mtim.tv_nsec};
}

constexpr int FlagsOf(OpenFor purpose) {
  switch (purpose) {
    case OpenFor::Reading:
      return O_RDONLY;
    case OpenFor::Writing:
      return O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW;
    case OpenFor::Making:
      break;
  }
  return O_WRONLY | O_CREAT | O_EXCL;
}

}  // namespace

bool IgnoresCaseOfNames() { return false; }

bool IsQuotaUsedUp(std::error_code error) { return error.value() == EDQUOT; }

FileState StateOf(std::FILE* file, std::error_code& error) {
  struct stat status {};
  error = fstat(fileno(file), &status) == 0 ? std::error_code() : LastError();
  return StateFrom(status);
}

FileState StateOf(const fs::path& path, std::error_code& error) {
  struct stat status {};
  error = stat(path.c_str(), &status) == 0 ? std::error_code() : LastError();
  if (error == std::errc::not_a_directory) error = std::make_error_code(std::errc::no_such_file_or_directory);
  return StateFrom(status);
}

bool IsLink(const fs::path& path) {
  std::error_code none;
  return fs::is_symlink(fs::symlink_status(path, none));
}

fs::path LinkTarget(const fs::path& path, std::error_code& error) {
  constexpr int maxLinks = 40;  // as the system's own bound
  fs::path target = path;
  error.clear();
  for (int i = 0; i < maxLinks; ++i) {
    if (!IsLink(target)) return target;
    const fs::path next = fs::read_symlink(target, error);
    if (error) return path;
    target = target.parent_path() / next;
  }
  error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return path;
}

std::FILE* OpenFile(const fs::path& path, OpenFor purpose, std::error_code& error) {
  error.clear();
  const int descriptor = open(path.c_str(), FlagsOf(purpose) | O_CLOEXEC, 0666);
  std::FILE* const file =
      descriptor < 0 ? nullptr : fdopen(descriptor, purpose == OpenFor::Reading ? "rb" : "wb");
  if (file != nullptr) return file;
  error = LastError();
  if (descriptor >= 0) {
    close(descriptor);
    std::error_code ignored;
    const bool isEmpty =
        purpose != OpenFor::Reading && fs::is_regular_file(fs::symlink_status(path, ignored));
    if (isEmpty) fs::remove(path, ignored);
  }
  return nullptr;
}

bool SeekTo(std::FILE* file, std::int64_t offset) { return fseeko(file, offset, SEEK_SET) == 0; }

bool FlushToDisk(std::FILE* file) { return std::fflush(file) == 0 && fsync(fileno(file)) == 0; }

// Whoever can make a file beside it can, but what nobody is to write shall stay.
std::error_code ReplaceError(const fs::path& path) {
  const bool isWritable = IsLink(path) || faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  return isWritable || errno == ENOENT ? std::error_code() : LastError();
}

void CopyPermissions(const fs::path& from, std::FILE* to, std::error_code& error) {
  struct stat status {};
  const bool isDone = stat(from.c_str(), &status) == 0 && fchmod(fileno(to), status.st_mode & 07777) == 0;
  error = isDone ? std::error_code() : LastError();
}

}  // namespace sondrix
