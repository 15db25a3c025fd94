#pragma once

#include "core/date_time.h"
#include "core/fault.h"
#include "core/run.h"
#include "core/run_result.h"
#include "jobs/text_body.h"
#include "jobs/text_source.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// What the jobs that read tables and logs share.

// The text source of a run, whose reading ends when the window says so.
TextSource SourceOf(const Run& run, LineStart start);

// The run was told to stop: its notice in the log line.
void ShowStop(Run& run);

// Waits while the pause is on; false with the notice in the log line once the run is to stop.
bool MayReadOn(Run& run);

// The buffer, emptied for the next record.
inline std::string& Fresh(std::string& buffer) {
  buffer.clear();
  return buffer;
}

// Where a job is in its source.
struct LineProgress {
  std::int64_t line = 0, lineCount = 0;
  std::int32_t points = 0;
};

// Shows " 12% line 345/2900 dot 17" and pumps events; text is a buffer for the line.
void ShowLineProgress(Run& run, std::string& text, const LineProgress& progress);

// Puts a line for the reason into the bad lines; value stands behind the reason.
void ReportBadLine(const Run& run, TextBody& bad, std::string_view reason, std::string_view value,
                   std::int64_t line);

// When the next line that is passed over may be held for the eye, which reads a few in a second; at a job's
// start the first that it may.
using EyeTime = std::chrono::steady_clock::time_point;
EyeTime NextEyeTime();

// The same, and shows that the line is passed over: now and then for as long as the eye needs.
void PassOverLine(Run& run, TextBody& bad, EyeTime& next, std::string_view reason, std::int64_t line);

// Inside a catch block: the fault ends the run. Shows its report, or the message in its place, with a beep.
void ShowTextFault(Run& run, RunResult& result, std::string_view place,
                   std::string_view Messages::*message = nullptr);

// A stop before the first line was read.
void StopBeforeLines(Run& run, RunResult& result);

// The refusal of a source whose first line has no separator.
void RefuseSource(Run& run, RunResult& result);

// Empties the name of the outputs, which are written.
void ClearTargetName(Run& run);

// A 32-bit number from a source's text. Faults 13 and 6.
float FloatOf(std::string_view text);

// The machine's clock, read anew at each call.
class LocalClock {
 public:
  DateSeconds Now();

 private:
  std::int64_t unixSeconds_ = -1;
  DateSeconds date_ = 0;
};

}  // namespace sondrix
