#include "exports/export_formats.h"

#include "core/text.h"

#include <algorithm>

namespace sondrix {
namespace {

constexpr struct {
  std::string_view ending;
  ExportKind kind;
} Kinds[] = {
    {".csv", ExportKind::Csv},         {".gpx", ExportKind::Gpx},       {".xyz", ExportKind::Xyz},
    {".gpkg", ExportKind::Geopackage}, {".tif", ExportKind::Geotiff},   {".geojson", ExportKind::GeoJson},
    {".json", ExportKind::GeoJson},    {".shp", ExportKind::Shapefile},
};

constexpr std::string_view KeptEndings[] = {".csb.json", ".kmz", ".png", ".mbtiles", ".mp", ".img"};

// What is put in place of the path's ending or, with a plus, behind it.
constexpr struct {
  ExportKind kind;
  std::string_view ending;
} Stale[] = {
    {ExportKind::Geopackage, "+-wal"},     {ExportKind::Geopackage, "+-shm"},
    {ExportKind::Geopackage, "+-journal"}, {ExportKind::Geopackage, "+.aux.xml"},
    {ExportKind::Geotiff, "+.aux.xml"},    {ExportKind::Geotiff, "+.ovr"},
    {ExportKind::Geotiff, "+.msk"},        {ExportKind::Shapefile, ".qix"},
    {ExportKind::Shapefile, ".sbn"},       {ExportKind::Shapefile, ".sbx"},
};

bool EndsWith(std::string_view path, std::string_view ending) {
  if (path.size() <= ending.size()) return false;
  const std::string_view last = path.substr(path.size() - ending.size());
  return std::equal(last.begin(), last.end(), ending.begin(), [](char a, char b) { return Lower(a) == b; });
}

}  // namespace

bool NeedsChart(ExportKind kind) {
  return kind == ExportKind::Geotiff || kind == ExportKind::GeoJson || kind == ExportKind::Shapefile ||
         kind == ExportKind::Contours;
}

std::optional<ExportKind> ExportKindOf(std::string_view path) {
  if (IsKeptEnding(path)) return std::nullopt;
  for (const auto& kind : Kinds) {
    if (EndsWith(path, kind.ending)) return kind.kind;
  }
  return std::nullopt;
}

bool IsKeptEnding(std::string_view path) {
  return std::any_of(std::begin(KeptEndings), std::end(KeptEndings),
                     [path](std::string_view ending) { return EndsWith(path, ending); });
}

std::vector<std::string> StaleCompanions(std::string_view path, ExportKind kind) {
  std::vector<std::string> paths;
  for (const auto& [of, ending] : Stale) {
    if (of != kind) continue;
    const bool isBehind = ending.starts_with('+');
    const std::string_view begin = isBehind ? path : path.substr(0, path.rfind('.'));
    paths.push_back(std::string(begin).append(ending.substr(isBehind ? 1 : 0)));
  }
  return paths;
}

std::string_view ExportEndings() {
  return ".csv, .gpx, .xyz, .gpkg, .tif, .geojson, .shp and what else GDAL makes of lines";
}

}  // namespace sondrix
