#pragma once

#include <span>
#include <string>

namespace sondrix {

// What sondrix-chart does with the arguments behind its name; returns its exit status. gisFolders: where the
// module for GDAL and PROJ is looked for when it is needed.
int RunChart(std::span<const std::string> arguments, std::span<const std::string> gisFolders);

}  // namespace sondrix
