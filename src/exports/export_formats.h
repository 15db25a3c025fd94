#pragma once

#include <optional>
#include <string_view>

namespace sondrix {

// The kinds of files that can be made of a survey, by the endings of their names.
enum class ExportKind { Csv, Gpx, Xyz, Geopackage };

// In any letter case; none where the ending stands for nothing that is made.
std::optional<ExportKind> ExportKindOf(std::string_view path);

// Behind the name of a file of that kind while it grows: some writers look at it.
std::string_view GrowingSuffixOf(ExportKind kind);

std::string_view ExportEndings();  // all of them, for a line

}  // namespace sondrix
