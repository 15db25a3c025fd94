#include "app/chart/source_choice.h"

#include "app/places.h"
#include "core/files.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
#include <system_error>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

// What this call writes, by place and by file.
class OutputPlaces {
 public:
  // Returns why the outputs can't stand beside each other; empty where they can.
  std::string Add(std::span<const std::string> outputs) {
    for (const std::string& output : outputs) {
      for (const std::string& path : {output, GrowingName(output)}) {
        const auto [claim, isFree] = places_.emplace(PlaceOf(path), output);
        if (!isFree) return output + ": two outputs would take the same place";
      }
      if (const auto id = KnownIdOf(output)) files_.push_back(*id);
    }
    return {};
  }

  bool Holds(const std::string& path, const std::string& place) const {
    if (places_.contains(place)) return true;
    if (files_.empty()) return false;
    const auto id = KnownIdOf(path);
    return id && std::find(files_.begin(), files_.end(), *id) != files_.end();
  }

 private:
  std::map<std::string, std::string> places_;
  std::vector<FileId> files_;
};

bool IsHidden(std::string_view below) {
  for (std::size_t i = 0; i < below.size(); ++i) {
    if (below[i] == '.' && (i == 0 || IsSeparator(below[i - 1]))) return true;
  }
  return false;
}

}  // namespace

SourceChoice ChooseSources(std::span<const std::string> given, std::span<const std::string> outputs,
                           const std::string& shore) {
  SourceChoice choice;
  OutputPlaces places;
  choice.refusal = places.Add(outputs);
  const std::string shorePlace = shore.empty() ? shore : PlaceOf(shore);
  if (!shore.empty() && choice.refusal.empty() && places.Holds(shore, shorePlace)) {
    choice.refusal = shore + ": is the shore and an output";
  }
  std::set<std::string> taken;
  const auto take = [&](const std::string& path, std::optional<std::size_t> folder) {
    const std::string place = PlaceOf(path);
    if (places.Holds(path, place)) {
      if (folder) {
        choice.ignored.push_back({path, "it is an output"});
      } else if (choice.refusal.empty()) {
        choice.refusal = path + ": is a source and an output";
      }
    } else if (place == shorePlace && folder) {
      choice.ignored.push_back({path, "it is the shore"});
    } else if (taken.insert(place).second) {
      choice.sources.push_back({path, folder, LengthOfFile(path)});
    } else if (folder) {
      choice.folders[*folder].isTakenBefore = true;
    } else {
      choice.ignored.push_back({path, "it is given twice"});
    }
  };
  for (const std::string& source : given) {
    std::error_code unknown;
    if (!fs::is_directory(PathOf(source), unknown)) {
      take(source, std::nullopt);
      continue;
    }
    choice.folders.push_back({source});
    const std::size_t folderLength = WithSeparator(source).size();
    for (const std::string& file : FilesIn(source, true)) {
      if (!IsHidden(std::string_view(file).substr(std::min(folderLength, file.size())))) {
        take(file, choice.folders.size() - 1);
      }
    }
  }
  return choice;
}

}  // namespace sondrix
