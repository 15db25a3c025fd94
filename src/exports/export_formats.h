#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// The kinds of files that can be made, by the endings of their names. Contours are made by GDAL's driver for
// the ending, see exports/contour_files.
enum class ExportKind { Csv, Gpx, Xyz, Geopackage, Geotiff, GeoJson, Shapefile, Contours };

// Whether nothing can be made without a depth model.
bool NeedsChart(ExportKind kind);

// In any letter case; none where the ending stands for nothing of ours.
std::optional<ExportKind> ExportKindOf(std::string_view path);

// Whether another program's driver mustn't be asked for a file of that ending: it will be ours.
bool IsKeptEnding(std::string_view path);

// The files beside an output of an earlier one of its name, which programs would take for the new one's: an
// index of places, statistics, a journal.
std::vector<std::string> StaleCompanions(std::string_view path, ExportKind kind);

std::string_view ExportEndings();  // all of them, for a line

}  // namespace sondrix
