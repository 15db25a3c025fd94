#include "exports/export_formats.h"

#include "core/text.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr struct {
  std::string_view ending;
  ExportKind kind;
} Kinds[] = {
    {".csv", ExportKind::Csv},
    {".gpx", ExportKind::Gpx},
    {".xyz", ExportKind::Xyz},
    {".gpkg", ExportKind::Geopackage},
};

bool EndsWith(std::string_view path, std::string_view ending) {
  if (path.size() <= ending.size()) return false;
  const std::string_view last = path.substr(path.size() - ending.size());
  return std::equal(last.begin(), last.end(), ending.begin(), [](char a, char b) { return Lower(a) == b; });
}

}  // namespace

std::optional<ExportKind> ExportKindOf(std::string_view path) {
  for (const auto& kind : Kinds) {
    if (EndsWith(path, kind.ending)) return kind.kind;
  }
  return std::nullopt;
}

std::string_view GrowingSuffixOf(ExportKind kind) {
  return kind == ExportKind::Geopackage ? ".part.gpkg" : ".part";
}

std::string_view ExportEndings() { return ".csv, .gpx, .xyz and .gpkg"; }

}  // namespace sondrix
