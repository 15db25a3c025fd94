#include "faults/fault_layer.h"

#include <cerrno>
#include <cstdarg>
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

// What the next stream is made of: this program opens both at once.
OpenFile& LastOpened() {
  static OpenFile file;
  return file;
}

OpenFile* Find(std::FILE* file) {
  const auto found = OpenFiles().find(file);
  return found == OpenFiles().end() ? nullptr : &found->second;
}

std::FILE* StreamOf(int descriptor) {
  for (const auto& [file, known] : OpenFiles())
    if (fileno(file) == descriptor) return file;
  return nullptr;
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
  const OpenFile* const known = Find(file);
  return known != nullptr && Fails(call, known->path.c_str(), isTransfer);
}

// How many of count items a read or a write that is to fail still moves.
std::size_t Share(std::FILE* file, std::size_t count) {
  if (TheFaultLayer().shortened) return count / 2;
  if (OpenFile* const known = Find(file)) known->hasFailed = true;
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
BEFORE(int, -1, file, fseeko, (std::FILE * file, off_t offset, int origin), (file, offset, origin))
BEFORE(int, -1, file, fflush, (std::FILE * file), (file))
BEFORE(int, -1, StreamOf(descriptor), fsync, (int descriptor), (descriptor))
BEFORE(int, -1, StreamOf(descriptor), fstat, (int descriptor, struct stat* status) noexcept,
       (descriptor, status))
BEFORE(int, -1, StreamOf(descriptor), fchmod, (int descriptor, mode_t mode) noexcept, (descriptor, mode))

int open(const char* path, int flags, ...) {
  static const auto behind = BEHIND(open);
  std::va_list rest;
  va_start(rest, flags);
  const unsigned mode = (flags & O_CREAT) != 0 ? va_arg(rest, unsigned) : 0;
  va_end(rest);
  const bool forReading = (flags & O_ACCMODE) == O_RDONLY;
  if (Fails(forReading ? "open to read" : "open", path)) return -1;
  const int descriptor = behind(path, flags, mode);
  LastOpened() = {path, forReading};
  return descriptor;
}

std::FILE* fdopen(int descriptor, const char* mode) noexcept {
  static const auto behind = BEHIND(fdopen);
  const OpenFile& opened = LastOpened();
  if (Fails("fdopen", opened.path.c_str())) return nullptr;
  std::FILE* const file = behind(descriptor, mode);
  if (file != nullptr && opened.path.starts_with(TheFaultLayer().folder)) OpenFiles()[file] = opened;
  return file;
}

// A closing that fails has closed the file all the same.
int fclose(std::FILE* file) {
  static const auto behind = BEHIND(fclose);
  const OpenFile* const known = Find(file);
  const bool fails = known != nullptr && Fails(known->forReading ? "fclose of a source" : "fclose", file);
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
  const OpenFile* const known = Find(file);
  if (known == nullptr || !known->hasFailed) return behind(file);
  errno = TheFaultLayer().error;
  return 1;
}

std::time_t time(std::time_t* result) noexcept {
  if (result != nullptr) *result = Now;
  return Now;
}

}  // extern "C"
