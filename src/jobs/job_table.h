#pragma once

#include "core/run_result.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

struct Run;
struct Settings;

// What a run may put behind the name of its outputs.
struct OutputSuffix {
  std::string_view text;               // "#" stands for the channel's number
  bool Settings::*onlyWith = nullptr;  // the flag without which it isn't written
};

// One row per kind of source; the only list of them. A kind stands before those that it writes.
struct JobRow {
  std::string_view extension;  // of the source, compared exactly
  RunResult (*run)(Run& run);
  std::span<const OutputSuffix> outputs;
  bool isBesideSource = false;  // the outputs' name is the source's without its extension, in its folder
  bool hasPictures = false;     // it ends with a picture
};

// The picture of a run's end, which is a batch program's to write.
inline constexpr std::string_view EndPictureSuffix = "_ch#.bmp";

std::span<const JobRow> Jobs();

// The row of a source's extension; any other extension is a table's.
const JobRow& JobOf(std::string_view source);

// A suffix with a channel's number.
std::string SuffixOf(std::string_view suffix, int channel);

// The paths that a run of the source may write with these settings, the folder of pictures among them. None
// for a source that no job would take.
std::vector<std::string> OutputsOf(const Settings& settings, std::string_view source);

}  // namespace sondrix
