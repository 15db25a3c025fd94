#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

inline constexpr std::string_view BatchProgram = "sondrix-batch";

// FIELD=VALUE of the command line.
struct FieldEdit {
  std::string name, value;
};

struct BatchOptions {
  std::optional<std::string> targetPath;
  std::vector<FieldEdit> edits;  // in the order given
  std::string iniFile;           // empty: the built-in defaults
  bool answer = true;            // to every question
  bool verbose = false;
  bool listFields = false;
  bool json = false;       // an object for each source in the place of its line
  bool quiet = false;      // no line of a source that ended well
  bool noPicture = false;  // of the end of a run
  bool recursive = false;  // subfolders of a folder too
  int jobs = 1;            // sources at a time
  std::string writeIni;    // where the settings go; empty: nowhere
  std::vector<std::string> sources;
};

// Either options to go on with, or a text and the status to leave with: 0 for the texts that were asked for,
// 2 for wrong usage.
struct ParsedOptions {
  BatchOptions options;
  std::optional<int> exitStatus;
  std::string text;
};

// From the arguments behind the program's name.
ParsedOptions ParseOptions(std::span<const std::string> arguments);

}  // namespace sondrix
