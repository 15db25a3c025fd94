#include "app/batch/output_clash.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

#include "core/files.h"
#include "core/settings.h"

namespace sondrix {
namespace {

// One spelling for every path that leads to the same place.
std::string PlaceOf(const std::string& path) {
  std::error_code error;
  const std::filesystem::path place = std::filesystem::weakly_canonical(PathOf(path), error);
  const std::u8string text = (error ? PathOf(path).lexically_normal() : place).generic_u8string();
  std::string spelled(text.begin(), text.end());
#ifdef _WIN32
  std::transform(spelled.begin(), spelled.end(), spelled.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
#endif
  return spelled;
}

std::string FolderOf(const Settings& settings) {
  std::string folder = settings.TargetPath;
  if (folder.size() > 3 && !IsSeparator(folder.back())) folder += PathSeparator;
  return folder;
}

// What a run of the source claims; "*" stands for all suffixes behind a stem. Nothing for a source that no
// job would take.
std::vector<std::string> ClaimsOf(const Settings& settings, const std::string& source) {
  const std::string_view file = FileNameOf(source);
  const std::size_t point = file.rfind('.');
  if (file.empty() || (point == std::string_view::npos && settings.TargetName.empty())) return {};

  const std::string_view extension = std::string_view(source).substr(source.rfind('.') + 1);
  if (extension == "mp") return {PlaceOf(source.substr(0, source.size() - 3) + ".txt")};

  const std::string stem =
      FolderOf(settings) +
      (settings.TargetName.empty() ? std::string(file.substr(0, point)) : settings.TargetName);
  std::vector<std::string> claims = {PlaceOf(stem) + "*"};
  const bool isTextJob = extension != "sl2" && extension != "sl3" && extension != "log";
  if (isTextJob) claims.push_back(PlaceOf(stem + ".txt"));
  return claims;
}

}  // namespace

std::optional<std::pair<std::string, std::string>> OutputClash(const Settings& settings,
                                                               std::span<const std::string> sources) {
  std::map<std::string, std::string> claimed;
  for (const std::string& source : sources) {
    for (const std::string& claim : ClaimsOf(settings, source)) {
      const auto [owner, isFree] = claimed.emplace(claim, source);
      if (!isFree) return std::pair(owner->second, source);
    }
  }
  return std::nullopt;
}

}  // namespace sondrix
