#pragma once

#include "platform/file_system.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace sondrix {

inline constexpr auto PathSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

// Whether c separates the parts of a path here: on Windows both slashes do.
bool IsSeparator(char c);

// A folder as the start of a path: with a separator behind it, if it has none and is longer than that many
// characters.
std::string WithSeparator(std::string_view folder, std::size_t longerThan = 0);

// A path of the file system from its UTF-8 text.
std::filesystem::path PathOf(std::string_view utf8);

// The part behind the last separator.
std::string_view FileNameOf(std::string_view path);

// Creates all folders of path up to its last separator. False if one can't be made; true where path holds no
// separator.
bool MakeFolders(std::string_view path);

// Deletes a file if there is one. Faults as of the operating system.
void DeleteIfThere(std::string_view path);

// Of the file that a path leads to, links followed; none where there is none. Faults where that can't be
// found out.
std::optional<FileId> IdOf(std::string_view path);
// The same, and none where it can't be found out.
std::optional<FileId> KnownIdOf(std::string_view path);

struct FileCloser {
  void operator()(std::FILE* file) const;
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// What a read throws whose reader is to end; no fault.
struct EndAsked {};

// A regular file open for reading at any position.
class InputFile {
 public:
  // Fault 53 or 76 where there is none, 75 for a folder, 52 for what is no regular file, others as of the
  // operating system. isToEnd is asked before each read.
  explicit InputFile(std::string_view path, std::function<bool()> isToEnd = {});
  std::int64_t Length() const { return opened_.length; }  // bytes at the time of opening
  FileId Id() const { return opened_.id; }
  // Whether its length or the time of its last change isn't that of the opening any more. Faults as of the
  // operating system.
  bool HasChanged() const;
  // Reads up to target.size() bytes from offset; returns how many there were. Throws EndAsked.
  std::size_t ReadAt(std::int64_t offset, std::span<std::uint8_t> target);
  void Close() { file_.reset(); }

 private:
  FileHandle file_;
  FileState opened_;
  std::function<bool()> isToEnd_;
  std::int64_t position_ = 0;
};

// A file being written from its start; one of that name is replaced, and so is a link, which isn't followed,
// and a name of a file that has others.
class OutputFile {
 public:
  OutputFile() = default;
  // Fault 75 for a folder, 76 where the folder is missing, 52 for what would be waited for, others as of the
  // operating system. To make a file is fault 75 where anything stands.
  explicit OutputFile(std::string_view path, OpenFor purpose = OpenFor::Writing);
  bool IsOpen() const { return file_ != nullptr; }
  // Unbuffered: a caller hands over pieces of some kilobytes. Faults as of the operating system.
  void Write(std::span<const std::uint8_t> bytes);
  void Write(std::string_view bytes);
  // Writes the last pieces and closes. On a fault the file is taken away: none stays that ends too early.
  void Complete(std::span<const std::string_view> pieces);
  // Returns when what was written is on the disk.
  void Flush();
  // A wish: the permissions of the file at a path.
  void TakePermissionsOf(const std::filesystem::path& path);
  // Faults that show only at the closing are thrown here; the destructor closes in silence. What was written
  // may be lost also where nothing failed: fault 76 if the folder is gone, 75 if the path leads to another
  // file or to none.
  void Close();
  // Closes and removes it, if its path still leads to it.
  void TakeAway();

 private:
  bool IsInPlace() const;

  std::filesystem::path path_;
  FileHandle file_;
  FileId id_;
};

// Under which name beside it a file of that path grows: with the suffix behind it or, where the name would
// get too long for a file system, with its start, a number that stands for the rest, and the suffix.
std::string GrowingName(std::string_view path, std::string_view suffix = ".part");

// An output under a name of its own, which holds no whole file until it is put in its place: a program that
// is ended before leaves the earlier file alone.
class GrowingFile {
 public:
  GrowingFile() = default;
  // The file grows at its GrowingName, whatever stood there but a folder. Faults as of an output at the path.
  explicit GrowingFile(std::string_view path, std::string_view suffix = ".part");
  bool IsOpen() const { return file_.IsOpen(); }
  OutputFile& File() { return file_; }  // which the caller doesn't close
  // Closes it and gives it its name, in place of what has it. On a fault it stays as it is; 75 for a folder.
  void PutInPlace();
  // Closes and removes it.
  void TakeAway();

 private:
  std::filesystem::path path_, growing_;
  OutputFile file_;
};

// The whole file as bytes.
std::string ReadWhole(std::string_view path);

}  // namespace sondrix
