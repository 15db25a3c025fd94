#include "faults/fault_layer.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace sondrix {

FaultLayer& TheFaultLayer() {
  static FaultLayer layer;
  return layer;
}

namespace {

constexpr std::time_t Now = 1'700'000'000;

struct OpenFile {
  std::string path;
  bool forReading = false, hasFailed = false;
};
std::map<std::FILE*, OpenFile>& OpenFiles() {
  static std::map<std::FILE*, OpenFile> files;
  return files;
}

OpenFile* Find(std::FILE* file) {
  const auto found = OpenFiles().find(file);
  return found == OpenFiles().end() ? nullptr : &found->second;
}

bool Fails(const char* call, const char* path, bool isTransfer = false) {
  FaultLayer& layer = TheFaultLayer();
  if (layer.folder.empty() || path == nullptr || !std::string_view(path).starts_with(layer.folder))
    return false;
  if ((layer.shortened && !isTransfer) || ++layer.calls != layer.failAt) return false;
  layer.call = call;
  layer.path = path;
  errno = layer.error;
  return true;
}

bool Fails(const char* call, std::FILE* file, bool isTransfer = false) {
  const OpenFile* const open = Find(file);
  return open != nullptr && Fails(call, open->path.c_str(), isTransfer);
}

// How many of count items a read or a write that is to fail still moves.
std::size_t Share(std::FILE* file, std::size_t count) {
  if (TheFaultLayer().shortened) return count / 2;
  if (OpenFile* const open = Find(file)) open->hasFailed = true;
  return 0;
}

}  // namespace
}  // namespace sondrix

using namespace sondrix;

// The function of that name behind this layer.
#define BEHIND(name) reinterpret_cast<decltype(&(name))>(dlsym(RTLD_NEXT, #name))
#define BEFORE(type, failure, subject, name, parameters, arguments) \
  type name parameters {                                            \
    static const auto behind = BEHIND(name);                        \
    return Fails(#name, subject) ? (failure) : behind arguments;    \
  }

extern "C" {

BEFORE(int, -1, path, stat, (const char* path, struct stat* status) noexcept, (path, status))
BEFORE(int, -1, path, lstat, (const char* path, struct stat* status) noexcept, (path, status))
BEFORE(int, -1, path, mkdir, (const char* path, mode_t mode) noexcept, (path, mode))
BEFORE(int, -1, path, remove, (const char* path) noexcept, (path))
BEFORE(int, -1, path, truncate, (const char* path, off_t length) noexcept, (path, length))
BEFORE(int, -1, path, rename, (const char* path, const char* to) noexcept, (path, to))
BEFORE(int, -1, path, fchmodat, (int folder, const char* path, mode_t mode, int flags) noexcept,
       (folder, path, mode, flags))
BEFORE(char*, nullptr, path, realpath, (const char* path, char* resolved) noexcept, (path, resolved))
BEFORE(int, -1, file, fseeko, (std::FILE * file, off_t offset, int origin), (file, offset, origin))
BEFORE(off_t, -1, file, ftello, (std::FILE * file), (file))
BEFORE(int, -1, file, fflush, (std::FILE * file), (file))

int fsync(int descriptor) {
  static const auto behind = BEHIND(fsync);
  for (const auto& [file, open] : OpenFiles()) {
    if (fileno(file) == descriptor && Fails("fsync", file)) return -1;
  }
  return behind(descriptor);
}

std::FILE* fopen(const char* path, const char* mode) {
  static const auto behind = BEHIND(fopen);
  const bool forReading = mode[0] == 'r';
  if (Fails(forReading ? "fopen to read" : "fopen", path)) return nullptr;
  std::FILE* const file = behind(path, mode);
  if (file != nullptr && std::string_view(path).starts_with(TheFaultLayer().folder)) {
    OpenFiles()[file] = {path, forReading};
  }
  return file;
}

// A closing that fails has closed the file all the same.
int fclose(std::FILE* file) {
  static const auto behind = BEHIND(fclose);
  const OpenFile* const open = Find(file);
  const bool fails = open != nullptr && Fails(open->forReading ? "fclose of a source" : "fclose", file);
  OpenFiles().erase(file);
  const int result = behind(file);
  if (fails) errno = TheFaultLayer().error;
  return fails ? EOF : result;
}

std::size_t fread(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  static const auto behind = BEHIND(fread);
  return behind(bytes, size, Fails("fread", file, true) ? Share(file, count) : count, file);
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  static const auto behind = BEHIND(fwrite);
  if (!Fails("fwrite", file, true)) return behind(bytes, size, count, file);
  const std::size_t written = behind(bytes, size, Share(file, count), file);
  errno = TheFaultLayer().error;
  return written;
}

int ferror(std::FILE* file) noexcept {
  static const auto behind = BEHIND(ferror);
  const OpenFile* const open = Find(file);
  if (open == nullptr || !open->hasFailed) return behind(file);
  errno = TheFaultLayer().error;
  return 1;
}

std::time_t time(std::time_t* result) noexcept {
  if (result != nullptr) *result = Now;
  return Now;
}

}  // extern "C"
