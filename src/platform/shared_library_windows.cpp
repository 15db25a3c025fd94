#include "platform/shared_library.h"
#include "platform/utf8_windows.h"

#include <windows.h>

namespace sondrix {

std::string LibraryFileName(std::string_view name) { return std::string(name) + ".dll"; }

std::string SystemLibraryFolder() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
  return Utf8Of(folder);
}

// A damaged library is no reason for the system's own message box.
SharedLibrary::SharedLibrary(std::string_view path) {
  const std::filesystem::path file = WidePath(path);
  if (!file.is_absolute()) return;
  DWORD before = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before);
  handle_ = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  SetThreadErrorMode(before, nullptr);
}

SharedLibrary::~SharedLibrary() {
  if (handle_) FreeLibrary(static_cast<HMODULE>(handle_));
}

// Compilers differ in how much of a function's kind they leave in its exported name.
SharedLibrary::Address SharedLibrary::Find(std::string_view name, std::size_t argumentBytes) const {
  const std::string plain(name);
  const std::string decorated = plain + '@' + std::to_string(argumentBytes);
  for (const std::string& one : {plain, decorated, '_' + decorated}) {
    if (const FARPROC address = GetProcAddress(static_cast<HMODULE>(handle_), one.c_str())) {
      return reinterpret_cast<Address>(address);
    }
  }
  return nullptr;
}

}  // namespace sondrix
