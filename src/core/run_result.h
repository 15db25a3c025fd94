#pragma once

#include "core/fault.h"
#include "core/messages.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// How a click on the start button ended.
enum class RunEnd {
  Finished,    // the source, or the chosen interval of it, came to its end
  Refused,     // turned away before anything was read
  Stopped,     // by the user
  EndedEarly,  // before its source did, without the user asking
  Failed,      // by a fault
};

// The English word for an end: "finished", "refused", "stopped", "ended early", "failed".
std::string_view NameOf(RunEnd end);

struct RunOutput {
  std::string path;
  bool isWhole = false;  // false: it couldn't be written, or not all that the run had for it
};

// The frames of a channel as a recording has them, or the rows of a table that name it.
struct ChannelCount {
  std::uint8_t channel = 0;
  std::int64_t frames = 0;
  std::int64_t withDepth = 0;  // of them, those that carry a depth above 0
};

// What a click led to. The log line is one rendering of it; exit status, lines, the end picture and the
// window read the record.
struct RunResult {
  std::string target;  // the path of the outputs without their suffixes
  RunEnd end = RunEnd::Finished;
  std::string_view place;                         // of the fault, as its report names it
  std::optional<Fault> fault;                     // that ended the run, with the path that it met
  std::string_view Messages::*message = nullptr;  // the report of the end, where that is a fixed text
  std::vector<RunOutput> outputs;                 // in the order of writing
  std::vector<Fault> lost;                        // of outputs that couldn't be written, with their paths
  std::vector<ChannelCount> channels;             // met, by their numbers
  std::int64_t frames = 0;                        // or lines of the source that were read
  std::int64_t soundings = 0;                     // of the chosen channel, inside the interval
  std::int64_t withDepth = 0;                     // soundings that carry a depth
  std::int64_t withFix = 0;                       // soundings of a log whose position has a fix
  std::int64_t points = 0;                        // written
  // Smallest and largest index of the chosen channel's frames that were met.
  std::optional<std::int32_t> firstIndex, lastIndex;

  // It came to the end that the user wanted, with every output whole.
  bool IsWell() const;
};

// The line that tells how a run ended: a fixed text, or the report of its fault. Empty for another end.
std::string LineOf(const RunResult& result, const Messages& messages);

}  // namespace sondrix
