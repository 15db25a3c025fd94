#include "app/batch/output_clash.h"

#include "core/files.h"
#include "core/settings.h"
#include "platform/file_system.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

namespace sondrix {
namespace {

// One spelling for every path that leads to the same place.
std::string PlaceOf(const std::string& path) {
  std::error_code error;
  const std::filesystem::path place = std::filesystem::weakly_canonical(PathOf(path), error);
  const std::u8string text = (error ? PathOf(path).lexically_normal() : place).generic_u8string();
  std::string spelled(text.begin(), text.end());
  if (IgnoresCaseOfNames()) {
    std::transform(spelled.begin(), spelled.end(), spelled.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  }
  return spelled;
}

std::string FolderOf(const Settings& settings) { return WithSeparator(settings.TargetPath, 3); }

// What is put behind the target's name, by the source's extension; the last row serves all others.
struct OutputRow {
  std::string_view extension;
  std::vector<std::string_view> suffixes;
};
const OutputRow Outputs[] = {
    {"sl2", {".csv", "_bad.txt", "_usr.wpt"}},
    {"sl3", {".csv", "_bad.txt", "_usr.wpt"}},
    {"log", {".drd.txt", ".srf.txt", ".plt", ".mp", ".bad.txt"}},
    {"", {".txt", ".plt", ".mp", "_bad.txt"}},
};

// The places that a run of the source writes to. None for a source that no job would take.
std::vector<std::string> PlacesOf(const Settings& settings, const std::string& source) {
  const std::string_view file = FileNameOf(source);
  const std::size_t point = file.rfind('.');
  if (file.empty() || (point == std::string_view::npos && settings.TargetName.empty())) return {};

  const std::string_view extension = std::string_view(source).substr(source.rfind('.') + 1);
  if (extension == "mp") return {PlaceOf(source.substr(0, source.size() - 3) + ".txt")};

  const std::string folder = FolderOf(settings);
  const std::string stem =
      folder + (settings.TargetName.empty() ? std::string(file.substr(0, point)) : settings.TargetName);
  std::vector<std::string> places;
  const auto* row = std::find_if(std::begin(Outputs), std::end(Outputs) - 1,
                                 [&](const OutputRow& one) { return one.extension == extension; });
  for (const std::string_view suffix : row->suffixes) places.push_back(PlaceOf(stem + std::string(suffix)));
  if (!extension.starts_with("sl")) return places;
  const std::string channel = stem + "_ch" + std::to_string(settings.UseTyp);
  if (settings.MakeCut) places.push_back(PlaceOf(channel + ".sl2"));
  if (settings.MakeGraf) places.push_back(PlaceOf(channel + ".bmp"));
  if (settings.SaveGraf) places.push_back(PlaceOf(folder + "echo"));
  return places;
}

}  // namespace

std::optional<Clash> OutputClash(const Settings& settings, std::span<const std::string> sources) {
  std::map<std::string, std::string> sourcePlaces, claimed;
  for (const std::string& source : sources) sourcePlaces.emplace(PlaceOf(source), source);
  for (const std::string& source : sources) {
    for (const std::string& place : PlacesOf(settings, source)) {
      const auto overwritten = sourcePlaces.find(place);
      if (overwritten != sourcePlaces.end()) return Clash{source, overwritten->second, true};
      const auto [owner, isFree] = claimed.emplace(place, source);
      if (!isFree) return Clash{owner->second, source, false};
    }
  }
  return std::nullopt;
}

}  // namespace sondrix
