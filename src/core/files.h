#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

class Fault;
class Window;

#ifdef _WIN32
inline constexpr char PathSeparator = '\\';
#else
inline constexpr char PathSeparator = '/';
#endif

// Whether c separates the parts of a path here: on Windows both slashes do.
bool IsSeparator(char c);

// A path of the file system from its UTF-8 text.
std::filesystem::path PathOf(std::string_view utf8);

// The part behind the last separator.
std::string_view FileNameOf(std::string_view path);

// Creates all folders of path up to its last separator. False if one can't be made; true where path holds no
// separator.
bool MakeFolders(std::string_view path);

// Deletes a file if there is one. Faults as of the operating system.
void DeleteIfThere(std::string_view path);

// Whether both paths lead to the same existing file, links followed. Faults where that can't be found out.
bool SameFile(std::string_view one, std::string_view other);

// To be called before an output is opened: fault 55 if its path leads to the run's own source.
void GuardSource(std::string_view output, std::string_view source);

struct FileCloser {
  void operator()(std::FILE* file) const;
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// A regular file open for reading at any position.
class InputFile {
 public:
  // Fault 53 or 76 where there is none, 75 for a folder, 52 for what is no regular file, others as of the
  // operating system.
  explicit InputFile(std::string_view path);
  std::int64_t Length() const { return length_; }  // bytes at the time of opening
  // Reads up to target.size() bytes from offset; returns how many there were.
  std::size_t ReadAt(std::int64_t offset, std::span<std::uint8_t> target);
  void Close() { file_.reset(); }

 private:
  FileHandle file_;
  std::int64_t length_ = 0;
  std::int64_t position_ = 0;
};

// A file being written from its start; one of that name is replaced.
class OutputFile {
 public:
  OutputFile() = default;
  explicit OutputFile(std::string_view path);
  bool IsOpen() const { return file_ != nullptr; }
  // Unbuffered: a caller hands over pieces of some kilobytes. Faults as of the operating system.
  void Write(std::span<const std::uint8_t> bytes);
  void Write(std::string_view bytes);
  // Writes the last pieces and closes. On a fault the file is taken away: none stays that ends too early.
  void Complete(std::span<const std::string_view> pieces);
  // Returns when what was written is on the disk.
  void Flush();
  // Faults that show only at the closing are thrown here; the destructor closes in silence.
  void Close();

 private:
  void TakeAway();

  std::filesystem::path path_;
  FileHandle file_;
};

// The whole file as bytes.
std::string ReadWhole(std::string_view path);

// Puts "ошибка WriteF: " + number + ". " + description into the log line.
void ReportWriteF(const Fault& fault, Window& window);

// Replaces path by text and one CR LF, in the 8-bit code page. A fault is reported as above, no file that
// ends too early stays, and the caller goes on.
void WriteF(std::string_view path, std::string_view text, Window& window);

// The same for pieces of text that are 8-bit bytes already; they are written one after the other.
void WriteBytesF(std::string_view path, std::span<const std::string_view> pieces, Window& window);

}  // namespace sondrix
