#include "core/files.h"

#include "core/code_page.h"
#include "core/fault.h"

#include <cerrno>
#include <utility>

namespace sondrix {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void ThrowErrno() {
  const int error = errno;
  throw Fault(error == 0 ? FaultNumber::DeviceIo
                         : FaultOfError(std::error_code(error, std::generic_category())));
}

void ThrowIf(std::error_code error) {
  if (error) throw Fault(FaultOfError(error));
}

FileHandle Open(const fs::path& path, OpenFor purpose) {
  std::error_code error;
  FileHandle file(OpenFile(path, purpose, error));
  ThrowIf(error);
  std::setvbuf(file.get(), nullptr, _IONBF, 0);
  return file;
}

FileState StateOfOpen(const FileHandle& file) {
  std::error_code error;
  const FileState state = StateOf(file.get(), error);
  ThrowIf(error);
  return state;
}

std::optional<FileId> IdAt(const fs::path& path) {
  std::error_code error;
  const FileState state = StateOf(path, error);
  if (error == std::errc::no_such_file_or_directory) return std::nullopt;
  ThrowIf(error);
  return state.id;
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

// Devices stay.
void Remove(const fs::path& path) {
  std::error_code ignored;
  if (fs::is_regular_file(fs::symlink_status(path, ignored))) fs::remove(path, ignored);
}

// What is written there would change a file that has a name elsewhere too.
bool LeadsElsewhere(const fs::path& path) {
  std::error_code error;
  if (IsLink(path)) return true;
  if (!fs::is_regular_file(path, error)) return false;
  const std::uintmax_t names = fs::hard_link_count(path, error);
  return !error && names > 1;
}

// A name in the way of an output: a link goes, and a fault for what can't be written or replaced.
void MakeWay(const fs::path& path) {
  if (LeadsElsewhere(path)) {
    ThrowIf(ReplaceError(path));
    std::error_code error;
    fs::remove(path, error);
    ThrowIf(error);
  }
  switch (TypeOf(path)) {
    case fs::file_type::directory:
      throw Fault(FaultNumber::PathAccess);
    case fs::file_type::not_found:
      if (!FolderIsThere(path)) throw Fault(FaultNumber::PathNotFound);
      break;
    case fs::file_type::fifo:  // the opening would wait for a reader
    case fs::file_type::socket:
      throw Fault(FaultNumber::BadFileName);
    default:
      break;
  }
}

std::size_t LastSeparator(std::string_view path) {
  constexpr char separators[] = {'/', PathSeparator};
  return path.find_last_of(std::string_view(separators, sizeof separators));
}

}  // namespace

bool IsSeparator(char c) { return c == '/' || c == PathSeparator; }

fs::path PathOf(std::string_view utf8) { return fs::path(std::u8string(utf8.begin(), utf8.end())); }

std::string WithSeparator(std::string_view folder, std::size_t longerThan) {
  std::string text(folder);
  if (CharacterCount(text) > longerThan && !IsSeparator(text.back())) text += PathSeparator;
  return text;
}

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

std::optional<FileId> IdOf(std::string_view path) { return IdAt(PathOf(path)); }

std::optional<FileId> KnownIdOf(std::string_view path) {
  try {
    return IdOf(path);
  } catch (const Fault&) {
    return std::nullopt;
  }
}

void FileCloser::operator()(std::FILE* file) const { std::fclose(file); }

// The kind of file is looked up before the opening, which would wait for the other end of a pipe.
InputFile::InputFile(std::string_view path, std::function<bool()> isToEnd) : isToEnd_(std::move(isToEnd)) {
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
  file_ = Open(name, OpenFor::Reading);
  opened_ = StateOfOpen(file_);
}

bool InputFile::HasChanged() const {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  return StateOfOpen(file_) != opened_;
}

std::size_t InputFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> target) {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  if (target.empty()) return 0;
  if (isToEnd_ && isToEnd_()) throw EndAsked();
  errno = 0;
  if (offset != position_ && !SeekTo(file_.get(), offset)) ThrowErrno();
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

OutputFile::OutputFile(std::string_view path, OpenFor purpose) : path_(PathOf(path)) {
  if (purpose == OpenFor::Writing) MakeWay(path_);
  file_ = Open(path_, purpose);
  try {
    id_ = StateOfOpen(file_).id;
  } catch (const Fault&) {
    file_.reset();
    Remove(path_);
    throw;
  }
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

// Another file may stand there by now, or a link to another one.
bool OutputFile::IsInPlace() const { return !IsLink(path_) && IdAt(path_) == id_; }

// Emptied first, for a name that can't be removed.
void OutputFile::TakeAway() {
  file_.reset();
  try {
    if (!IsInPlace()) return;
  } catch (const Fault&) {
    return;
  }
  std::error_code ignored;
  fs::resize_file(path_, 0, ignored);
  Remove(path_);
}

void OutputFile::Flush() {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  errno = 0;
  if (!FlushToDisk(file_.get())) ThrowErrno();
}

void OutputFile::TakePermissionsOf(const fs::path& path) {
  if (!file_) throw Fault(FaultNumber::BadFileName);
  std::error_code ignored;
  CopyPermissions(path, file_.get(), ignored);
}

// Asked before the closing: a file that nobody has open and no name leads to may give its number to the next
// one.
void OutputFile::Close() {
  if (!file_) return;
  FileHandle file = std::move(file_);
  const bool isInPlace = IsInPlace();
  errno = 0;
  if (std::fclose(file.release()) != 0) ThrowErrno();
  if (!isInPlace) throw Fault(FolderIsThere(path_) ? FaultNumber::PathAccess : FaultNumber::PathNotFound);
}

std::string GrowingName(std::string_view path, std::string_view suffix) {
  constexpr std::size_t longName = 120;  // bytes; any file system takes some more
  constexpr std::size_t keptCharacters = 24;
  const std::string_view name = FileNameOf(path);
  if (name.size() <= longName) return std::string(path).append(suffix);
  const std::string_view rest = FromCharacter(name, keptCharacters);
  std::string text(path.substr(0, path.size() - rest.size()));
  return text.append("~").append(std::to_string(std::hash<std::string_view>()(rest))).append(suffix);
}

GrowingFile::GrowingFile(std::string_view path, std::string_view suffix)
    : path_(PathOf(path)), growing_(PathOf(GrowingName(path, suffix))) {
  if (!LeadsElsewhere(path_)) MakeWay(path_);
  ThrowIf(ReplaceError(path_));
  std::error_code error;
  if (IsLink(growing_) || TypeOf(growing_) != fs::file_type::directory) fs::remove(growing_, error);
  ThrowIf(error);
  file_ = OutputFile(GrowingName(path, suffix), OpenFor::Making);
}

void GrowingFile::TakeAway() { file_.TakeAway(); }

void GrowingFile::PutInPlace() {
  file_.Close();
  std::error_code error;
  fs::rename(growing_, path_, error);
  ThrowIf(error);
}

std::string ReadWhole(std::string_view path) {
  InputFile file(path);
  std::string bytes;
  if (!std::in_range<std::size_t>(file.Length())) throw Fault(FaultNumber::OutOfMemory);
  bytes.resize(static_cast<std::size_t>(file.Length()));
  bytes.resize(file.ReadAt(0, std::span(reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size())));
  return bytes;
}

}  // namespace sondrix
