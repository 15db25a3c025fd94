#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace sondrix {

// What the standard library leaves to the systems about files. Errors are told by the last argument; a stream
// or a state is of no use then.

// Whether the system takes names that differ only in the case of Latin letters for one.
bool IgnoresCaseOfNames();

// Whether an error means that the user's share of the disk is used up, which has no name in the standard.
bool IsQuotaUsedUp(std::error_code error);

// Which file of the machine it is, whatever its name: equal for two names or streams of the same file.
struct FileId {
  std::uint64_t volume = 0, number = 0;
  friend bool operator==(const FileId&, const FileId&) = default;
};

struct FileState {
  FileId id;
  std::int64_t length = 0;      // bytes
  std::int64_t lastChange = 0;  // of the content; in the system's finest unit, since a start of its own
  friend bool operator==(const FileState&, const FileState&) = default;
};
FileState StateOf(std::FILE* file, std::error_code& error);
// Of a name, links followed; where there is none the error is std::errc::no_such_file_or_directory, also for
// a folder that is missing.
FileState StateOf(const std::filesystem::path& path, std::error_code& error);

// Whether the name itself is a link. False where there is nothing.
bool IsLink(const std::filesystem::path& path);
// Where a link leads in the end, also to a file that isn't there yet if the system can tell; else the path
// itself.
std::filesystem::path LinkTarget(const std::filesystem::path& path, std::error_code& error);

enum class OpenFor {
  Reading,
  Writing,  // from the start; what a file held before is gone. Never through a link
  Making,   // writing of a file that isn't there: an error where anything stands
};
std::FILE* OpenFile(const std::filesystem::path& path, OpenFor purpose, std::error_code& error);

bool SeekTo(std::FILE* file, std::int64_t offset);
// Returns when what was written is on the disk.
bool FlushToDisk(std::FILE* file);

// Why the file that stands there can't be replaced by a renamed one, as far as that can be known before; no
// error where it can or where there is none.
std::error_code ReplaceError(const std::filesystem::path& path);
// Gives an open file the permissions of another, where the system keeps them with a file.
void CopyPermissions(const std::filesystem::path& from, std::FILE* to, std::error_code& error);

}  // namespace sondrix
