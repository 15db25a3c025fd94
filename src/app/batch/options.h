#pragma once

#include <optional>
#include <span>
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

// From the arguments behind the program's name.
ParsedOptions ParseOptions(std::span<const std::string> arguments);

}  // namespace sondrix
