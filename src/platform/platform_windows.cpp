#include "core/files.h"
#include "platform/platform.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <windows.h>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::string Utf8Of(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

fs::path Executable() {
  std::wstring name(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) return fs::path(name.substr(0, length));
    name.resize(name.size() * 2);
  }
}

// GetVersionEx reports what the program's manifest names instead of the system that runs it.
using RtlGetVersionCall = LONG(WINAPI*)(OSVERSIONINFOW*);

// The first child window of a class, as the parts of a file manager's address bar are nested.
HWND ChildOf(HWND parent, const wchar_t* name) {
  return parent ? FindWindowExW(parent, nullptr, name, nullptr) : nullptr;
}

}  // namespace

std::string ProgramFolder() { return Utf8Of(Executable().parent_path()); }

std::string ProgramStem() { return Utf8Of(Executable().stem()); }

std::string ConfigFolder() {
  const wchar_t* appData = _wgetenv(L"APPDATA");
  return Utf8Of(fs::path(appData ? appData : L".") / "sondrix");
}

// Only an attempt tells: access lists, read-only media and redirected folders all play a part.
bool CanWriteFolder(std::string_view folder) {
  const fs::path probe = PathOf(folder) / ("sondrix." + std::to_string(GetCurrentProcessId()) + ".tmp");
  const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

int InterfaceLanguage() { return GetUserDefaultUILanguage(); }

int SystemLanguage() { return GetSystemDefaultUILanguage(); }

std::pair<int, int> SystemVersion() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  const HMODULE library = GetModuleHandleW(L"ntdll.dll");
  const FARPROC address = library ? GetProcAddress(library, "RtlGetVersion") : nullptr;
  if (!address) return {0, 0};
  const auto call = reinterpret_cast<RtlGetVersionCall>(reinterpret_cast<void*>(address));
  if (call(&version) != 0) return {0, 0};
  return {static_cast<int>(version.dwMajorVersion), static_cast<int>(version.dwMinorVersion)};
}

std::string FileManagerAddress() {
  constexpr int MaxAddress = 255;  // characters
  HWND window = FindWindowW(L"ExploreWClass", nullptr);
  if (!window) window = FindWindowW(L"CabinetWClass", nullptr);
  const HWND address = ChildOf(ChildOf(ChildOf(window, L"WorkerW"), L"ReBarWindow32"), L"ComboBoxEx32");
  if (!address) return {};
  std::array<wchar_t, MaxAddress + 1> text{};
  SendMessageW(address, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return Utf8Of(fs::path(std::wstring(text.data())));
}

std::string SystemLibraryFolder() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
  return Utf8Of(folder);
}

// A damaged library is no reason for the system's own message box.
SharedLibrary::SharedLibrary(std::string_view path) {
  const fs::path file = PathOf(path);
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

// Each session of a user has its own names.
SingleInstance::SingleInstance(std::string_view name) {
  const HANDLE mutex = CreateMutexW(nullptr, FALSE, (L"Local\\" + PathOf(name).wstring()).c_str());
  const DWORD error = GetLastError();
  if (mutex) handle_ = reinterpret_cast<std::intptr_t>(mutex);
  isFirst_ = !mutex || error != ERROR_ALREADY_EXISTS;
}

SingleInstance::~SingleInstance() {
  if (handle_ != -1) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

}  // namespace sondrix
