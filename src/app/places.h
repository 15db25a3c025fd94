#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// One spelling for every path that leads to the same place.
std::string PlaceOf(const std::string& path);

// The regular files of a folder in the order of their names, with isDeep those of its subfolders too; links
// to folders aren't followed, and what can't be looked into is left out.
std::vector<std::string> FilesIn(const std::string& folder, bool isDeep);

// Bytes; 0 where they can't be known.
std::int64_t LengthOfFile(const std::string& path);

}  // namespace sondrix
