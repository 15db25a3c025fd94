#include "core/files.h"

#include "core/code_page.h"
#include "core/fault.h"
#include "core/window.h"

#include <cerrno>
#include <utility>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace sondrix {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void ThrowErrno() {
  const int error = errno;
  throw Fault(error == 0 ? FaultNumber::DeviceIo
                         : FaultOfError(std::error_code(error, std::generic_category())));
}

FileHandle Open(const fs::path& path, bool forWriting) {
  errno = 0;
#ifdef _WIN32
  FileHandle file(_wfopen(path.c_str(), forWriting ? L"wb" : L"rb"));
#else
  FileHandle file(std::fopen(path.c_str(), forWriting ? "wb" : "rb"));
#endif
  if (!file) ThrowErrno();
  std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

void Seek(std::FILE* file, std::int64_t offset, int origin) {
#ifdef _WIN32
  const int result = _fseeki64(file, offset, origin);
#else
  const int result = fseeko(file, offset, origin);
#endif
  if (result != 0) ThrowErrno();
}

std::int64_t Tell(std::FILE* file) {
#ifdef _WIN32
  const std::int64_t offset = _ftelli64(file);
#else
  const std::int64_t offset = ftello(file);
#endif
  if (offset < 0) ThrowErrno();
  return offset;
}

// What stands at the path; a fault where that can't be found out.
fs::file_type TypeOf(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::status(path, error).type();
  if (type == fs::file_type::none) throw Fault(FaultOfError(error));
  return type;
}

// A drive without a folder, as in "D:lake.csv", stands for its current one, which needs a name to be looked
// up.
bool FolderIsThere(const fs::path& path) {
  const fs::path folder = path.parent_path();
  return folder.empty() ||
         TypeOf(folder == folder.root_name() ? folder / "." : folder) == fs::file_type::directory;
}

std::size_t LastSeparator(std::string_view path) {
#ifdef _WIN32
  return path.find_last_of("\\/");
#else
  return path.rfind('/');
#endif
}

}  // namespace

bool IsSeparator(char c) {
#ifdef _WIN32
  return c == '\\' || c == '/';
#else
  return c == '/';
#endif
}

fs::path PathOf(std::string_view utf8) { return fs::path(std::u8string(utf8.begin(), utf8.end())); }

std::string_view FileNameOf(std::string_view path) {
  const std::size_t last = LastSeparator(path);
  return last == std::string_view::npos ? path : path.substr(last + 1);
}

bool MakeFolders(std::string_view path) {
  const std::size_t last = LastSeparator(path);
  if (last == std::string_view::npos) return true;
  const fs::path folder = PathOf(path.substr(0, last + 1));
  std::error_code error;
  fs::create_directories(folder, error);
  return fs::is_directory(folder, error);
}

void DeleteIfThere(std::string_view path) {
  const fs::path target = PathOf(path);
  std::error_code error;
  if (fs::is_directory(fs::symlink_status(target, error))) throw Fault(FaultNumber::PathAccess);
  fs::remove(target, error);
  if (error) throw Fault(FaultOfError(error));
}

bool SameFile(std::string_view one, std::string_view other) {
  std::error_code error;
  const bool isSame = fs::equivalent(PathOf(one), PathOf(other), error);
  if (error && error != std::errc::no_such_file_or_directory) throw Fault(FaultOfError(error));
  return isSame;
}

void GuardSource(std::string_view output, std::string_view source) {
  if (SameFile(output, source)) throw Fault(FaultNumber::FileAlreadyOpen);
}

void FileCloser::operator()(std::FILE* file) const { std::fclose(file); }

// The kind of file is looked up before the opening, which would wait for the other end of a pipe.
InputFile::InputFile(std::string_view path) {
  const fs::path name = PathOf(path);
  switch (TypeOf(name)) {
    case fs::file_type::regular:
      break;
    case fs::file_type::directory:
      throw Fault(FaultNumber::PathAccess);
    case fs::file_type::not_found:
      throw Fault(FolderIsThere(name) ? FaultNumber::FileNotFound : FaultNumber::PathNotFound);
    default:
      throw Fault(FaultNumber::BadFileName);
  }
  file_ = Open(name, false);
  Seek(file_.get(), 0, SEEK_END);
  length_ = position_ = Tell(file_.get());
}

std::size_t InputFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> target) {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  if (target.empty()) return 0;
  errno = 0;
  if (offset != position_) Seek(file_.get(), offset, SEEK_SET);
  const std::size_t count = std::fread(target.data(), 1, target.size(), file_.get());
  const bool whole = count == target.size();
  // The next read seeks, which clears the mark of the file's end.
  position_ = whole ? offset + static_cast<std::int64_t>(count) : -1;
  if (!whole && std::ferror(file_.get()) != 0) {
    std::clearerr(file_.get());
    ThrowErrno();
  }
  return count;
}

OutputFile::OutputFile(std::string_view path) : path_(PathOf(path)) {
  switch (TypeOf(path_)) {
    case fs::file_type::directory:
      throw Fault(FaultNumber::PathAccess);
    case fs::file_type::not_found:
      if (!FolderIsThere(path_)) throw Fault(FaultNumber::PathNotFound);
      break;
    case fs::file_type::fifo:  // the opening would wait for a reader
    case fs::file_type::socket:
      throw Fault(FaultNumber::BadFileName);
    default:
      break;
  }
  file_ = Open(path_, true);
}

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  if (bytes.empty()) return;
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) ThrowErrno();
}

void OutputFile::Write(std::string_view bytes) {
  Write(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

void OutputFile::Complete(std::span<const std::string_view> pieces) {
  try {
    for (const std::string_view piece : pieces) Write(piece);
    Close();
  } catch (...) {
    TakeAway();
    throw;
  }
}

// Emptied first, for a name that is a link or can't be removed.
void OutputFile::TakeAway() {
  file_.reset();
  std::error_code ignored;
  fs::resize_file(path_, 0, ignored);
  if (fs::is_regular_file(fs::symlink_status(path_, ignored))) fs::remove(path_, ignored);
}

void OutputFile::Flush() {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  errno = 0;
#ifdef _WIN32
  const bool isDone = std::fflush(file_.get()) == 0 && _commit(_fileno(file_.get())) == 0;
#else
  const bool isDone = std::fflush(file_.get()) == 0 && fsync(fileno(file_.get())) == 0;
#endif
  if (!isDone) ThrowErrno();
}

void OutputFile::Close() {
  if (!file_) return;
  errno = 0;
  if (std::fclose(file_.release()) != 0) ThrowErrno();
}

std::string ReadWhole(std::string_view path) {
  InputFile file(path);
  std::string bytes;
  if (!std::in_range<std::size_t>(file.Length())) throw Fault(FaultNumber::OutOfMemory);
  bytes.resize(static_cast<std::size_t>(file.Length()));
  bytes.resize(file.ReadAt(0, std::span(reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size())));
  return bytes;
}

void ReportWriteF(const Fault& fault, Window& window) {
  window.SetAtt("ошибка WriteF: " + std::to_string(fault.Number()) + ". " + std::string(fault.Description()));
}

void WriteF(std::string_view path, std::string_view text, Window& window) {
  std::string bytes;
  try {
    bytes = ToCodePage(text);
  } catch (...) {
    ReportWriteF(CaughtFault(), window);
    return;
  }
  const std::string_view piece = bytes;
  WriteBytesF(path, std::span(&piece, 1), window);
}

void WriteBytesF(std::string_view path, std::span<const std::string_view> pieces, Window& window) {
  try {
    std::vector<std::string_view> all(pieces.begin(), pieces.end());
    all.emplace_back("\r\n");
    OutputFile(path).Complete(all);
  } catch (...) {
    ReportWriteF(CaughtFault(), window);
  }
}

}  // namespace sondrix
