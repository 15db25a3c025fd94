#pragma once

#include <optional>
#include <string>
#include <vector>

namespace sondrix {

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
  std::vector<std::string> sources;
};

// Either options to go on with, or a text and the status to leave with: 0 for the texts that were asked for,
// 2 for wrong usage.
struct ParsedOptions {
  BatchOptions options;
  std::optional<int> exitStatus;
  std::string text;
};

ParsedOptions ParseOptions(int argc, const char* const* argv);

}  // namespace sondrix
