#pragma once

#include <span>
#include <string>
#include <vector>

namespace sondrix {

struct Settings;

// The files of a call, and what is to be told of its folders, a line each.
struct SourceList {
  std::vector<std::string> sources;
  std::vector<std::string> notes;         // of files that were left out
  std::vector<std::string> emptyFolders;  // in which nothing can be converted
};

// Puts in the place of each folder, in the order of their names, the files in it that a job takes by their
// extension, with isDeep those of its subfolders too; links to folders aren't followed. A file of a folder
// that another source would write, into the target or beside itself, is left out. Anything else stays as it
// was given.
SourceList ListSources(std::span<const std::string> given, const Settings& settings, bool isDeep);

}  // namespace sondrix
