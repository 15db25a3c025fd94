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
  if (layer.failAt == 0 || path == nullptr || !std::string_view(path).starts_with(layer.folder)) return false;
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
#define ON_PATH(name, parameters, arguments)           \
  int name parameters {                                \
    static const auto behind = BEHIND(name);           \
    return Fails(#name, path) ? -1 : behind arguments; \
  }
#define ON_FILE(type, name, parameters, arguments)     \
  type name parameters {                               \
    static const auto behind = BEHIND(name);           \
    return Fails(#name, file) ? -1 : behind arguments; \
  }

extern "C" {

ON_PATH(stat, (const char* path, struct stat* status) noexcept, (path, status))
ON_PATH(lstat, (const char* path, struct stat* status) noexcept, (path, status))
ON_PATH(mkdir, (const char* path, mode_t mode) noexcept, (path, mode))
ON_PATH(remove, (const char* path) noexcept, (path))
ON_PATH(truncate, (const char* path, off_t length) noexcept, (path, length))
ON_PATH(rename, (const char* path, const char* to) noexcept, (path, to))
ON_PATH(fchmodat, (int folder, const char* path, mode_t mode, int flags) noexcept,
        (folder, path, mode, flags))
ON_FILE(int, fseeko, (std::FILE * file, off_t offset, int origin), (file, offset, origin))
ON_FILE(off_t, ftello, (std::FILE * file), (file))
ON_FILE(int, fflush, (std::FILE * file), (file))

char* realpath(const char* path, char* resolved) noexcept {
  static const auto behind = BEHIND(realpath);
  return Fails("realpath", path) ? nullptr : behind(path, resolved);
}

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
