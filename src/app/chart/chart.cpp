#include "app/chart/chart.h"

#include "app/chart/assemble.h"
#include "app/chart/chart_run.h"
#include "app/chart/chart_steps.h"
#include "app/chart/gis_library.h"
#include "app/chart/lines.h"
#include "app/chart/options.h"
#include "app/chart/progress.h"
#include "app/chart/read_sources.h"
#include "app/chart/source_choice.h"
#include "app/chart/survey_steps.h"
#include "app/chart/write_outputs.h"
#include "app/command_line.h"
#include "app/exit_status.h"
#include "app/interrupt.h"
#include "core/fault.h"
#include "core/files.h"
#include "exports/export_run.h"
#include "exports/gis.h"
#include "platform/platform.h"
#include "sounders/common/zone.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace sondrix {
namespace {

constexpr std::string_view Program = "sondrix-chart";

void Complain(std::string_view text) { sondrix::Complain(Program, text); }

std::vector<std::string> OutputPathsOf(const ChartOptions& options) {
  std::vector<std::string> paths;
  for (const ChartOutput& output : options.outputs) paths.push_back(output.path);
  if (!options.report.empty()) paths.push_back(options.report);
  return paths;
}

// Those of one thread.
ReadOptions ReadOptionsOf(const ChartRun& run) {
  const ChartOptions& options = run.options;
  ReadOptions read;
  if (!options.sourceCrs.empty()) read.toDegrees = LoadGis(run.gisFolders).toDegrees(options.sourceCrs);
  read.channel = options.channel;
  read.columns = options.columns;
  read.isFeet = options.isFeet;
  read.isZUp = options.isZUp;
  if (!options.zone.empty()) {
    read.toUtc = ZoneOf(options.zone).value();
    read.zoneName = options.zone;
  }
  return read;
}

bool IsAllWell(const ChartRun& run) {
  return std::none_of(run.sources.begin(), run.sources.end(),
                      [](const SourceAccount& source) { return source.IsFailed(); }) &&
         std::all_of(run.outputs.begin(), run.outputs.end(),
                     [](const OutputAccount& output) { return output.problem.empty(); });
}

// Whether some file of each folder given was read.
bool AllFoldersGave(const ChartRun& run) {
  for (std::size_t f = 0; f < run.folders.size(); ++f) {
    const bool gave = std::any_of(run.sources.begin(), run.sources.end(), [f](const SourceAccount& source) {
      return source.source.folder == f && !source.IsPassed() && !source.isGuess;
    });
    if (!gave && !run.folders[f].isTakenBefore) return false;
  }
  return true;
}

int MakeChart(ChartRun& run, const SourceChoice& choice, Progress& progress) {
  const auto makeOptions = [&run] { return ReadOptionsOf(run); };
  std::vector<SourceReading> readings = ReadSources(choice.sources, run.threads, makeOptions, progress);
  Assemble(choice.sources, readings, run);
  readings.clear();
  SettleSurvey(run, progress);
  DrawChart(run, progress);
  WriteOutputs(run, progress);
  WriteReport(run);
  progress.End();
  for (const ChartLine& line : ChartLines(run)) {
    if (line.isComplaint) {
      Complain(line.text);
    } else {
      PutText(stdout, line.text + "\n");
    }
  }
  return IsAllWell(run) && AllFoldersGave(run) ? ExitWell : ExitFailed;
}

// What is wrong with the projections that are asked for is told before anything is read.
void TryProjections(const ChartRun& run) {
  const ChartOptions& options = run.options;
  if (!options.sourceCrs.empty()) LoadGis(run.gisFolders).toDegrees(options.sourceCrs);
  if (!options.crs.empty()) LoadGis(run.gisFolders).toPlane(options.crs);
}

// Returns what is wrong with an output; empty where nothing is.
std::string FindDrivers(ChartRun& run) {
  for (ChartOutput& output : run.options.outputs) {
    if (output.kind == ExportKind::Shapefile) output.driver = "ESRI Shapefile";
    if (output.kind != ExportKind::Contours) continue;
    output.driver = LoadGis(run.gisFolders).vectorDriverOf(output.path);
    if (output.driver.empty()) return OutputRefusal(output.path);
  }
  return {};
}

int ParseAndMake(std::span<const std::string> arguments, std::span<const std::string> gisFolders) {
  ParsedChartOptions parsed = ParseChartOptions(arguments);
  if (parsed.exitStatus) return EndBefore(Program, *parsed.exitStatus, parsed.text);
  const InterruptGuard guard;
  ChartRun run;
  run.options = std::move(parsed.options);
  run.gisFolders.assign(gisFolders.begin(), gisFolders.end());
  run.threads = run.options.threads > 0 ? run.options.threads
                                        : static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  const SourceChoice choice =
      ChooseSources(run.options.sources, OutputPathsOf(run.options), run.options.model.shore);
  if (!choice.refusal.empty()) {
    Complain(choice.refusal);
    return ExitUsage;
  }
  for (const IgnoredFile& file : choice.ignored) {
    Complain(ShownName(file.path) + ": left out, " + file.words);
  }
  run.folders = choice.folders;
  run.ignored = choice.ignored;
  Progress progress(IsTerminal(stderr));
  try {
    TryProjections(run);
    if (const std::string refusal = FindDrivers(run); !refusal.empty()) {
      Complain(refusal);
      return ExitUsage;
    }
    return MakeChart(run, choice, progress);
  } catch (const EndAsked&) {
    progress.End();
    Complain("interrupted: no file was made");
  } catch (const CantProject& reason) {
    Complain(reason.what());
    return ExitUsage;
  } catch (const CantExport& reason) {
    Complain(reason.what());
  } catch (const std::bad_alloc&) {
    progress.End();
    Complain("no file was made: " + std::string(DescriptionOf(FaultNumber::OutOfMemory)));
  }
  return ExitFailed;
}

}  // namespace

int RunChart(std::span<const std::string> arguments, std::span<const std::string> gisFolders) {
  return EndBehind(Program, ParseAndMake(arguments, gisFolders));
}

}  // namespace sondrix
