#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sondrix {

// What the program asks of the operating system, one source file each. Texts are UTF-8; folders have no
// separator at their end, but for a root.

// To be called first of all. Standard streams that the caller closed become the null device, so that no
// output takes their place. A file that outgrows the user's limit, or a reader of what is printed that goes
// away, fails the write and not the program.
void PrepareProcess();

// The signals that ask a program to end: Ctrl-C, a shutdown, a terminal that is closed.
std::span<const int> EndSignals();

std::string ProgramFolder();
// The executable's name without its extension.
std::string ProgramStem();
// A folder of the user's own for what can't be stored beside the program; it may not exist yet.
std::string ConfigFolder();
// Whether files can be made in a folder.
bool CanWriteFolder(std::string_view folder);

// Numbers of the languages that the user and the machine are set to, such as 0x407, 0x409, 0x419; 0 for one
// that has no number here.
int InterfaceLanguage();
int SystemLanguage();
// Major and minor version of the operating system.
std::pair<int, int> SystemVersion();

// The address that the user's open file manager shows; empty if there is none or no way to know.
std::string FileManagerAddress();

// The arguments behind the program's name. On Windows one with * or ? becomes the files that fit it, as a
// shell does elsewhere.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

// stdout or stderr: whether a user looks at it, and a text for it whose letters a terminal shows whatever its
// code page is.
bool IsTerminal(std::FILE* file);
void PutText(std::FILE* file, std::string_view text);

// The first of the user's running programs of a name, as long as it lives.
class SingleInstance {
 public:
  explicit SingleInstance(std::string_view name);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  // True also where the system can't tell.
  bool IsFirst() const { return isFirst_; }

 private:
  std::intptr_t handle_ = -1;
  bool isFirst_ = true;
};

}  // namespace sondrix
