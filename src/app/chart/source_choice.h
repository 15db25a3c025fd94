#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

// A file that is to be read.
struct ChartSource {
  std::string path;
  std::optional<std::size_t> folder;  // of those given, in which it was found; none: it was named itself
  std::int64_t length = 0;            // bytes, as far as they can be known before
};

struct ChartFolder {
  std::string path;
  bool isTakenBefore = false;  // files of it, by another name or folder
};

// A file that is neither read nor unknown.
struct IgnoredFile {
  std::string path;
  std::string words;  // why: "it is given twice"
};

// The files of a call.
struct SourceChoice {
  std::vector<ChartSource> sources;  // in the order given, those of a folder by their names
  std::vector<ChartFolder> folders;  // given
  std::vector<IgnoredFile> ignored;
  std::string refusal;  // why nothing at all can be done; empty: it can
};

// Puts all files of a folder and of its subfolders in the place of the folder, but for those whose names, or
// whose folders' names, begin with a period; links to folders aren't followed. What is given twice is read
// once. A named source that is one of the outputs, whatever the way there, and two outputs of the same place
// are refused; a folder's file that is an output is left out. The same with the shore, which is read too and
// is no source of soundings; empty: there is none.
SourceChoice ChooseSources(std::span<const std::string> given, std::span<const std::string> outputs,
                           const std::string& shore);

}  // namespace sondrix
