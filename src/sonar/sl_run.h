#pragma once

#include "core/date_time.h"
#include "core/files.h"
#include "core/run.h"
#include "core/run_result.h"
#include "core/settings.h"
#include "echo/depth_check.h"
#include "echo/points_3d.h"
#include "sonar/cut.h"
#include "sonar/layout/find_frame.h"
#include "sonar/layout/lists_3d.h"
#include "sonar/layout/sl_format.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/layout/sl_source.h"
#include "sonar/track_point.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sondrix {

// The progress line as far as it stands for frames of every channel: composed anew only where it changes.
struct ProgressLine {
  std::int64_t nextPercent = -1;  // file position from which the percentage is another one
  std::int32_t counter = 0;
  std::string text;
  bool isShown = false;  // the log line holds just this
};

// The state of one run of JobSl.
struct SlRun {
  explicit SlRun(Run& theRun) : run(theRun), sourcePath(theRun.settings.Source) {}

  Run& run;
  std::string sourcePath;  // events at a pump may choose another one
  RunResult result;
  std::optional<SlSource> source;
  std::string csvPath;
  GrowingFile csv;
  bool isCsvCut = false;  // a piece of it couldn't be written: it takes no more
  SlCut cut;
  SlFormat format;
  SlLeadFields lead;  // of the current frame, with the effective sample count
  std::int32_t FirstIndex = 0, LastIndex = 0;
  std::int32_t FrameCounter = 0;  // accepted frames
  std::optional<DateSeconds> RunDate;
  FrameSearch search;
  std::int32_t DefectLevel = 1;  // centimetres
  std::string CsvBuffer, BadLog;
  TrackState track;
  DepthState depth;
  Points3DState points;
  std::vector<Entry3D> LeftEntries, RightEntries;  // of a 3D frame, kept for their memory
  std::string line;                                // the log line under construction
  ProgressLine progress;
  std::optional<DateSeconds> stampTime;  // of the stamp in track.fix
  bool isCutShort = false;               // the recording itself asked for the stop
  std::int64_t countedTo = -1;           // file position of the last frame that was counted
  std::array<ChannelCount, 256> counts;  // by the number of the channel
};

// The target's path with its name and a suffix.
std::string TargetFile(const SlRun& sl, std::string_view suffix);

// Whole percent of the source that lie before a file position.
std::int64_t PercentOf(const SlRun& sl, std::int64_t filePosition);

// Waits while the pause is on; false with the notice in the log line if the run is to stop.
bool MayScanOn(SlRun& sl, std::string_view Messages::*notice);

// Puts the line for a fault of the recording at a file position into the log line and pumps.
void ShowLogError(SlRun& sl, std::int64_t filePosition);

// What a frame leads to.
enum class Step { NextFrame, Resync, Close };

// Decodes and judges the frame at Pos and, if it is a good one of the selected channel and inside the
// interval, does everything that a run does with it. Fault 9 for a frame that the file cuts off.
Step StepFrame(SlRun& sl);

// Looks for the next frame behind a bad one by the marker of its head and puts Pos there. False if the run
// closes. Fault 9 if the search reaches the end of the array.
bool Resynchronise(SlRun& sl);

}  // namespace sondrix
