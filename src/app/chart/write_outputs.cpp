#include "app/chart/write_outputs.h"

#include "app/chart/chart_run.h"
#include "app/chart/gis_library.h"
#include "app/chart/problem_words.h"
#include "app/chart/progress.h"
#include "app/chart/report.h"
#include "app/interrupt.h"
#include "app/places.h"
#include "chart/utm_zone.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/growing_folder.h"
#include "core/number_text.h"
#include "exports/chart_data.h"
#include "exports/csv.h"
#include "exports/gis.h"
#include "exports/gpx.h"
#include "exports/xyz.h"

#include <cmath>
#include <cstdlib>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {
namespace {

// Seconds since 1970: of the newest sounding, unless the machine is told what to take for today.
double DateOf(const ChartRun& run) {
  if (const char* const told = std::getenv("SOURCE_DATE_EPOCH"); told != nullptr) return ValOf(told);
  TripAccount sum;
  for (const TripAccount& trip : run.trips) sum.Add(trip);
  return std::isnan(sum.times.to) ? 0 : sum.times.to;
}

std::string CrsOf(const ChartRun& run) {
  if (!run.options.crs.empty()) return run.options.crs;
  UtmZoneCount zones;
  for (const Trip& trip : run.survey.trips) {
    for (std::size_t b = 0; b < trip.soundings.BlockCount(); ++b) zones.Add(trip.soundings.Block(b));
  }
  std::string crs = zones.Crs();
  if (crs.empty()) throw CantExport("no sounding is used");
  return crs;
}

// An output that isn't in its place yet; what can't be made or isn't wanted any more is taken away.
class Pending {
 public:
  Pending(const ChartRun& run, const ExportRun& exportRun, const ChartOutput& output, OutputAccount& account)
      : account_(account) {
    Try([&] {
      if (output.kind == ExportKind::Geopackage) {
        folder_ = GrowingFolder(output.path);
        stale_ = StaleCompanions(output.path, output.kind);
      } else {
        file_ = GrowingFile(output.path);
      }
      Write(output.kind, run, exportRun);
    });
  }
  Pending(OutputAccount& account, std::string_view text) : account_(account) {
    Try([&] {
      file_ = GrowingFile(account_.path);
      file_.File().Write(text);
    });
  }
  Pending(const Pending&) = delete;
  Pending& operator=(const Pending&) = delete;
  ~Pending() {
    if (!isInPlace_) TakeAway();
  }

  void PutInPlace() {
    if (!account_.problem.empty()) return;
    Try([this] {
      if (folder_.IsOpen()) {
        folder_.PutInPlace(stale_);
      } else {
        file_.PutInPlace();
      }
      isInPlace_ = true;
      account_.bytes = LengthOfFile(account_.path);
    });
  }

 private:
  void Try(const std::function<void()>& step) {
    try {
      step();
    } catch (const EndAsked&) {
      TakeAway();
      throw;
    } catch (const CantExport& reason) {
      account_.problem = reason.what();
    } catch (const CantProject& reason) {
      account_.problem = reason.what();
    } catch (...) {
      account_.problem = OutputProblem(CaughtFault());
    }
  }

  void TakeAway() {
    file_.TakeAway();
    folder_.TakeAway();
  }

  void Write(ExportKind kind, const ChartRun& run, const ExportRun& exportRun) {
    switch (kind) {
      case ExportKind::Csv:
        return WriteCsv(run.survey, exportRun, file_.File());
      case ExportKind::Gpx:
        return WriteGpx(run.survey, exportRun, file_.File());
      case ExportKind::Xyz:
        return WriteInPlane(run, exportRun);
      case ExportKind::Geopackage:
        return WriteGeopackageOf(run, exportRun);
      default:
        throw CantExport("there is no depth model");
    }
  }

  void WriteGeopackageOf(const ChartRun& run, const ExportRun& exportRun) {
    const ChartData chart = {.date = DateOf(run)};
    LoadGis(run.gisFolders).writeGeopackage(run.survey, chart, exportRun, folder_.InnerPath());
  }

  void WriteInPlane(const ChartRun& run, const ExportRun& exportRun) {
    const Gis& gis = LoadGis(run.gisFolders);
    const std::string crs = CrsOf(run);
    account_.note = crs;
    const std::uint64_t leftOut = WriteXyz(
        run.survey, exportRun, [&] { return gis.toPlane(crs); }, file_.File());
    if (leftOut > 0) account_.note += ", " + std::to_string(leftOut) + " soundings have no place in it";
  }

  OutputAccount& account_;
  GrowingFile file_;      // of what we write ourselves
  GrowingFolder folder_;  // of what GDAL writes
  std::vector<std::string> stale_;
  bool isInPlace_ = false;
};

}  // namespace

void WriteOutputs(ChartRun& run, Progress& progress) {
  const auto soundings = static_cast<std::int64_t>(run.survey.SoundingCount());
  const ExportRun exportRun = {run.threads, Interrupted, &progress.Done()};
  run.outputs.reserve(run.options.outputs.size() + 1);  // and the report
  std::deque<Pending> pending;
  for (const ChartOutput& output : run.options.outputs) {
    progress.Begin("writing " + output.path, soundings, "soundings");
    run.outputs.push_back({output.path});
    if (soundings == 0) {
      run.outputs.back().problem = "there are no soundings";
      continue;
    }
    pending.emplace_back(run, exportRun, output, run.outputs.back());
  }
  if (Interrupted()) throw EndAsked();
  for (Pending& one : pending) one.PutInPlace();
}

void WriteReport(ChartRun& run) {
  if (run.options.report.empty()) return;
  const std::string text = ReportText(run);
  run.outputs.reserve(run.outputs.size() + 1);
  run.outputs.push_back({run.options.report});
  Pending report(run.outputs.back(), text);
  report.PutInPlace();
}

}  // namespace sondrix
