#pragma once

#include "app/chart/options.h"
#include "app/chart/source_choice.h"
#include "chart/contours.h"
#include "chart/depth_model.h"
#include "sounders/common/reading.h"
#include "survey/far_places.h"
#include "survey/survey.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// A trip whose soundings another one has too.
struct LeftOutTrip {
  std::string name;
  std::string words;  // why: "the same soundings as lake.sl2"
  std::uint64_t soundings = 0;
};

// What became of a source.
struct SourceAccount {
  ChartSource source;
  std::string kind;                   // empty: no reader knows it
  std::string problem;                // why it gave nothing; empty: it was read
  bool isGuess = false;               // of SourceReading
  std::vector<LeftOutTrip> leftOut;   // of its trips
  std::vector<std::string> takenFor;  // of Reading, and so are the next two
  std::vector<std::string> remarks;
  PassedOverCounts passedOver{};
  std::size_t firstTrip = 0, tripCount = 0;  // in the survey, without those left out
  std::uint64_t soundings = 0;               // read, also of trips that are left out

  // A folder's file that no reader knows is no fault of anybody.
  bool IsPassed() const { return kind.empty() && source.folder; }
  // Nor is another program's text in a folder; it has its line all the same.
  bool IsFailed() const { return !problem.empty() && !IsPassed() && !(isGuess && source.folder); }
};

struct TripAccount {
  FateCounts fates{};
  TimeRange times;

  void Add(const TripAccount& other);
};

struct OutputAccount {
  std::string path;
  std::int64_t bytes = 0;
  std::string note = {};     // what is to be said of it besides
  std::string problem = {};  // why it wasn't made; empty: it was
};

// The chart: the grid and its contours, and how they came about.
struct ChartResult {
  std::string crs;                // EPSG:n; empty: it wasn't asked for, or no sounding is used
  std::vector<FarSoundings> far;  // left out of the chart
  MadeModel made;
  std::vector<double> depths;  // of contours, metres
  bool isStepCoarser = false;  // than asked for: there would be too many
  Contours contours;           // their depths in the unit asked for
  bool isMade = false;
  std::string problem;  // why it wasn't made; empty: it was, or no output needs it
};

// All that a call holds: what it was asked for and what came of it, for the lines and the report.
struct ChartRun {
  ChartOptions options;
  std::vector<std::string> gisFolders;  // where the module is looked for
  int threads = 1;
  std::vector<ChartFolder> folders;  // given
  std::vector<IgnoredFile> ignored;  // files
  std::vector<SourceAccount> sources;
  Survey survey;
  std::vector<TripAccount> trips;    // of the survey, once all fates are found
  std::vector<std::string> remarks;  // on all of it, a sentence each
  ChartResult chart;
  std::vector<OutputAccount> outputs;
};

// Metres; not a number where no cell has a depth.
double DeepestOf(const DepthModel& model);

// Of the trips of a source together.
TripAccount AccountOf(const SourceAccount& source, const ChartRun& run);

}  // namespace sondrix
