#include "platform/platform.h"
#include "platform/utf8_windows.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <io.h>
#include <windows.h>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

HANDLE SystemHandleOf(std::FILE* file) { return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))); }

// The files that a pattern fits, by name; the text itself where there are none.
void AppendFitting(const std::wstring& text, std::vector<std::string>& arguments) {
  std::vector<std::string> names;
  const std::wstring folder = text.substr(0, text.find_last_of(L"\\/:") + 1);
  WIN32_FIND_DATAW found{};
  const bool isPattern = text.find_first_of(L"*?", folder.size()) != std::wstring::npos;
  const HANDLE search = isPattern ? FindFirstFileW(text.c_str(), &found) : INVALID_HANDLE_VALUE;
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const bool isFile = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
      if (isFile) names.push_back(Utf8Of(folder + found.cFileName));
    } while (FindNextFileW(search, &found));
    FindClose(search);
  }
  if (names.empty()) names.push_back(Utf8Of(text));
  std::sort(names.begin(), names.end());
  arguments.insert(arguments.end(), names.begin(), names.end());
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

// The C library here leaves the places of closed streams empty, and there is no such limit.
void PrepareProcess() {}

std::span<const int> EndSignals() {
  static constexpr int signals[] = {SIGINT, SIGTERM, SIGBREAK};
  return signals;
}

std::string ProgramFolder() { return Utf8Of(Executable().parent_path().native()); }

std::string ProgramStem() { return Utf8Of(Executable().stem().native()); }

std::string ConfigFolder() {
  const wchar_t* appData = _wgetenv(L"APPDATA");
  return Utf8Of((fs::path(appData ? appData : L".") / "sondrix").native());
}

// Only an attempt tells: access lists, read-only media and redirected folders all play a part.
bool CanWriteFolder(std::string_view folder) {
  const fs::path probe = WidePath(folder) / ("sondrix." + std::to_string(GetCurrentProcessId()) + ".tmp");
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
  return Utf8Of(text.data());
}

// The narrow arguments lack the letters that the system's code page lacks.
std::vector<std::string> ProgramArguments(int, const char* const*) {
  int count = 0;
  wchar_t** const texts = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) AppendFitting(texts[i], arguments);
  LocalFree(texts);
  return arguments;
}

bool IsTerminal(std::FILE* file) {
  DWORD mode = 0;
  return GetConsoleMode(SystemHandleOf(file), &mode) != 0;
}

// The C library here holds back what goes to stderr, unless that is a terminal.
void PutText(std::FILE* file, std::string_view text) {
  if (!IsTerminal(file)) {
    std::fwrite(text.data(), 1, text.size(), file);
    if (file == stderr) std::fflush(file);
    return;
  }
  std::fflush(file);
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
  DWORD written = 0;
  WriteConsoleW(SystemHandleOf(file), wide.data(), static_cast<DWORD>(count), &written, nullptr);
}

// Each session of a user has its own names.
SingleInstance::SingleInstance(std::string_view name) {
  const HANDLE mutex = CreateMutexW(nullptr, FALSE, (L"Local\\" + WidePath(name).wstring()).c_str());
  const DWORD error = GetLastError();
  if (mutex) handle_ = reinterpret_cast<std::intptr_t>(mutex);
  isFirst_ = !mutex || error != ERROR_ALREADY_EXISTS;
}

SingleInstance::~SingleInstance() {
  if (handle_ != -1) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

}  // namespace sondrix
