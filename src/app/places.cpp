#include "app/places.h"

#include "core/files.h"
#include "core/text.h"
#include "platform/file_system.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::string Utf8Of(const std::u8string& text) { return {text.begin(), text.end()}; }

template <typename Iterator>
void AppendFiles(const fs::path& folder, std::vector<std::string>& files) {
  std::error_code error;
  Iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != Iterator(); entry.increment(error)) {
    std::error_code unknown;
    if (entry->is_regular_file(unknown)) files.push_back(Utf8Of(entry->path().u8string()));
  }
}

}  // namespace

std::string PlaceOf(const std::string& path) {
  std::error_code error;
  // From the root on: the start of a path that isn't there yet would stay as it is spelled.
  fs::path place = fs::absolute(PathOf(path), error);
  if (!error) place = fs::weakly_canonical(place, error);
  std::string spelled = Utf8Of((error ? PathOf(path).lexically_normal() : place).generic_u8string());
  if (IgnoresCaseOfNames()) std::transform(spelled.begin(), spelled.end(), spelled.begin(), Lower);
  return spelled;
}

std::vector<std::string> FilesIn(const std::string& folder, bool isDeep) {
  std::vector<std::string> files;
  if (isDeep) {
    AppendFiles<fs::recursive_directory_iterator>(PathOf(folder), files);
  } else {
    AppendFiles<fs::directory_iterator>(PathOf(folder), files);
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::int64_t LengthOfFile(const std::string& path) {
  std::error_code error;
  const std::uintmax_t length = fs::file_size(PathOf(path), error);
  return error ? 0 : static_cast<std::int64_t>(length);
}

}  // namespace sondrix
