#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How functions of libraries for all programs are called where there is more than one way.
#if defined(_WIN32) && !defined(_WIN64)
#define SONDRIX_LIBRARY_CALL __stdcall
#else
#define SONDRIX_LIBRARY_CALL
#endif

namespace sondrix {

// The usual name of a library's file, as in "OziAPI.dll" or "liboziapi.so" for "OziAPI".
std::string LibraryFileName(std::string_view name);

// Where the machine's own libraries for all programs lie.
std::string SystemLibraryFolder();

// A library that is loaded while the program runs, and stays so as long as this record lives. It is taken
// from the very file that is named, never from a search; its own libraries may lie beside it.
class SharedLibrary {
 public:
  using Address = void (*)();

  explicit SharedLibrary(std::string_view path);
  ~SharedLibrary();
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  // False for a file that is missing, damaged, or made for another kind of processor.
  bool IsLoaded() const { return handle_ != nullptr; }
  // A function, null where the library has none of that name. argumentBytes: what the arguments take on the
  // stack, which 32-bit Windows libraries may carry in the name.
  Address Find(std::string_view name, std::size_t argumentBytes) const;

 private:
  void* handle_ = nullptr;
};

}  // namespace sondrix
