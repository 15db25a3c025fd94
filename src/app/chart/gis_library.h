#pragma once

#include <span>
#include <string>
#include <vector>

namespace sondrix {

struct Gis;

// Where the module is looked for: beside the program and, where it is installed, in lib/sondrix.
std::vector<std::string> GisFolders();

// The first module in the folders that can be loaded; it stays loaded to the end of the program. CantExport
// where there is none, or one of another version.
const Gis& LoadGis(std::span<const std::string> folders);

}  // namespace sondrix
