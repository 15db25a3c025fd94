#include "platform/file_system.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
using Handle = std::unique_ptr<HANDLE, HandleCloser>;

// To ask about a file or a folder, whoever has it open; nothing is waited for.
Handle OpenToAsk(const fs::path& path, DWORD access, DWORD flags) {
  constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return Handle(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

bool MeansMissing(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
      return true;
    default:
      return false;
  }
}

constexpr std::uint64_t Joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

FileState StateOfHandle(HANDLE handle, std::error_code& error) {
  BY_HANDLE_FILE_INFORMATION facts{};
  error = GetFileInformationByHandle(handle, &facts) ? std::error_code() : LastError();
  return {{facts.dwVolumeSerialNumber, Joined(facts.nFileIndexHigh, facts.nFileIndexLow)},
          static_cast<std::int64_t>(Joined(facts.nFileSizeHigh, facts.nFileSizeLow)),
          static_cast<std::int64_t>(
              Joined(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime))};
}

}  // namespace

bool IgnoresCaseOfNames() { return true; }

bool IsQuotaUsedUp(std::error_code error) {
  constexpr int diskQuotaExceeded = 1295;  // which the compiler's headers don't name
  return error == std::error_code(diskQuotaExceeded, std::system_category());
}

FileState StateOf(std::FILE* file, std::error_code& error) {
  return StateOfHandle(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))), error);
}

FileState StateOf(const fs::path& path, std::error_code& error) {
  const Handle handle = OpenToAsk(path, FILE_READ_ATTRIBUTES, 0);
  if (handle.get() != INVALID_HANDLE_VALUE) return StateOfHandle(handle.get(), error);
  error =
      MeansMissing(GetLastError()) ? std::make_error_code(std::errc::no_such_file_or_directory) : LastError();
  return {};
}

// Other marks of this kind, as of files that are kept elsewhere until somebody reads them, are no links.
bool IsLink(const fs::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return found.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

fs::path LinkTarget(const fs::path& path, std::error_code& error) {
  error.clear();
  if (!IsLink(path)) return path;
  const Handle handle = OpenToAsk(path, FILE_READ_ATTRIBUTES, 0);
  if (handle.get() == INVALID_HANDLE_VALUE) {
    if (!MeansMissing(GetLastError())) error = LastError();
    return path;
  }
  std::wstring target(MAX_PATH, L'\0');
  while (true) {
    const auto room = static_cast<DWORD>(target.size());
    const DWORD length = GetFinalPathNameByHandleW(handle.get(), target.data(), room, FILE_NAME_NORMALIZED);
    if (length == 0) {
      error = LastError();
      return path;
    }
    const bool fits = length < room;
    target.resize(length);
    if (fits) return target;
  }
}

std::FILE* OpenFile(const fs::path& path, OpenFor purpose, std::error_code& error) {
  errno = 0;
  std::FILE* file = nullptr;
  if (purpose == OpenFor::Making) {
    const int descriptor =
        _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (descriptor >= 0) file = _fdopen(descriptor, "wb");
  } else {
    file = _wfopen(path.c_str(), purpose == OpenFor::Reading ? L"rb" : L"wb");
  }
  error = file != nullptr ? std::error_code()
                          : std::error_code(errno == 0 ? EIO : errno, std::generic_category());
  return file;
}

bool SeekTo(std::FILE* file, std::int64_t offset) { return _fseeki64(file, offset, SEEK_SET) == 0; }

bool FlushToDisk(std::FILE* file) { return std::fflush(file) == 0 && _commit(_fileno(file)) == 0; }

// A program that has it open may keep it from being replaced.
std::error_code ReplaceError(const fs::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return {};
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return std::make_error_code(std::errc::permission_denied);
  const Handle handle = OpenToAsk(path, DELETE, FILE_FLAG_OPEN_REPARSE_POINT);
  if (handle.get() != INVALID_HANDLE_VALUE || MeansMissing(GetLastError())) return {};
  return std::make_error_code(std::errc::permission_denied);
}

// Here they come from the folder.
void CopyPermissions(const fs::path&, std::FILE*, std::error_code& error) { error.clear(); }

}  // namespace sondrix
