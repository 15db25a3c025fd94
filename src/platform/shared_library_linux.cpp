#include "platform/file_system.h"
#include "platform/shared_library.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <memory>
#include <utility>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

template <typename Record>
bool ReadRecord(std::FILE* file, std::uint64_t offset, Record& record) {
  return std::in_range<std::int64_t>(offset) && SeekTo(file, static_cast<std::int64_t>(offset)) &&
         std::fread(&record, sizeof record, 1, file) == 1;
}

// Whether a library is made for this kind of program and has all bytes that are to be loaded. The system maps
// what its head promises, and a program that touches a page behind the file's end is ended.
bool IsWholeImage(const fs::path& path) {
  std::error_code error;
  const auto close = [](std::FILE* open) { std::fclose(open); };
  const std::unique_ptr<std::FILE, decltype(close)> file(OpenFile(path, OpenFor::Reading, error));
  if (!file) return false;
  const auto length = static_cast<std::uint64_t>(StateOf(file.get(), error).length);
  ElfW(Ehdr) head{};
  if (error || !ReadRecord(file.get(), 0, head) || std::memcmp(head.e_ident, ELFMAG, SELFMAG) != 0 ||
      head.e_ident[EI_CLASS] != (sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32) ||
      head.e_phentsize != sizeof(ElfW(Phdr))) {
    return false;
  }
  for (std::uint64_t i = 0; i < head.e_phnum; ++i) {
    ElfW(Phdr) part{};
    if (!ReadRecord(file.get(), head.e_phoff + i * sizeof part, part)) return false;
    if (part.p_filesz > length || part.p_offset > length - part.p_filesz) return false;
  }
  return true;
}

}  // namespace

std::string LibraryFileName(std::string_view name) {
  std::string lower(name);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return "lib" + lower + ".so";
}

std::string SystemLibraryFolder() { return "/usr/local/lib"; }

// Only a whole path is opened as it stands: a bare name would be searched for. A pipe would be waited for.
SharedLibrary::SharedLibrary(std::string_view path) {
  const fs::path file = path;
  std::error_code error;
  if (!file.is_absolute() || !fs::is_regular_file(file, error) || !IsWholeImage(file)) return;
  handle_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

SharedLibrary::~SharedLibrary() {
  if (handle_) dlclose(handle_);
}

SharedLibrary::Address SharedLibrary::Find(std::string_view name, std::size_t) const {
  return reinterpret_cast<Address>(dlsym(handle_, std::string(name).c_str()));
}

}  // namespace sondrix
