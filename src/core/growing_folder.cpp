#include "core/growing_folder.h"

#include "core/fault.h"
#include "core/files.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

constexpr const char* Earlier = "earlier";  // the folder within for what is replaced

void ThrowIf(std::error_code error) {
  if (error) throw Fault(FaultOfError(error));
}

fs::file_type TypeOf(const fs::path& path) {
  std::error_code ignored;
  return fs::symlink_status(path, ignored).type();
}

std::vector<fs::path> FilesIn(const fs::path& folder) {
  std::error_code error;
  std::vector<fs::path> paths;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
    paths.push_back(at->path());
  ThrowIf(error);
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string TextOf(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

// A folder of somebody else's holds what an output never leaves.
void RemoveLeftOver(const fs::path& folder) {
  for (const fs::path& path : FilesIn(folder)) {
    const bool isOurs = TypeOf(path) == fs::file_type::regular || path.filename() == Earlier;
    if (!isOurs) throw Fault(FaultNumber::PathAccess, TextOf(path));
  }
  std::error_code error;
  fs::remove_all(folder, error);
  ThrowIf(error);
}

// Renames that are taken back, the last one first, unless all come through.
class Renames {
 public:
  Renames() = default;
  Renames(const Renames&) = delete;
  Renames& operator=(const Renames&) = delete;
  ~Renames() {
    std::error_code ignored;
    for (std::size_t i = done_.size(); i-- > 0;) fs::rename(done_[i].second, done_[i].first, ignored);
  }
  void Do(const fs::path& from, const fs::path& to) {
    done_.reserve(done_.size() + 1);
    std::error_code error;
    fs::rename(from, to, error);
    ThrowIf(error);
    done_.emplace_back(from, to);
  }
  void Keep() { done_.clear(); }

 private:
  std::vector<std::pair<fs::path, fs::path>> done_;
};

}  // namespace

GrowingFolder::GrowingFolder(std::string_view path) : path_(PathOf(path)) {
  const std::string name = GrowingName(path);
  const fs::path folder = PathOf(name);
  if (TypeOf(folder) == fs::file_type::directory) RemoveLeftOver(folder);
  // Whatever keeps an output from being made there shows at a file.
  GrowingFile trial(path);
  trial.TakeAway();
  std::error_code error;
  fs::create_directory(folder, error);
  ThrowIf(error);
  folder_ = folder;
}

std::string GrowingFolder::InnerPath() const { return TextOf(folder_ / path_.filename()); }

void GrowingFolder::PutInPlace(std::span<const std::string> stale) {
  const fs::path inner = folder_ / path_.filename(), earlier = folder_ / Earlier;
  std::vector<fs::path> companions = FilesIn(folder_);
  std::erase(companions, inner);
  std::error_code error;
  fs::create_directory(earlier, error);
  ThrowIf(error);
  Renames renames;
  const auto moveAside = [&](const fs::path& path) {
    const fs::file_type type = TypeOf(path);
    if (type == fs::file_type::not_found) return;
    if (type == fs::file_type::directory) throw Fault(FaultNumber::PathAccess, TextOf(path));
    renames.Do(path, earlier / path.filename());
  };
  for (const std::string& path : stale) moveAside(PathOf(path));
  for (const fs::path& companion : companions) {
    const fs::path place = path_.parent_path() / companion.filename();
    moveAside(place);
    renames.Do(companion, place);
  }
  renames.Do(inner, path_);
  renames.Keep();
  TakeAway();
}

void GrowingFolder::TakeAway() {
  if (folder_.empty()) return;
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
  folder_.clear();
}

}  // namespace sondrix
