#include "app/chart/write_outputs.h"

#include "app/chart/chart_run.h"
#include "app/chart/gis_library.h"
#include "app/chart/lines.h"
#include "app/chart/problem_words.h"
#include "app/chart/progress.h"
#include "app/chart/report.h"
#include "app/interrupt.h"
#include "app/places.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/growing_folder.h"
#include "core/number_text.h"
#include "exports/chart_data.h"
#include "exports/csv.h"
#include "exports/geojson.h"
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

ChartData ChartDataOf(const ChartRun& run) {
  const ChartResult& chart = run.chart;
  return {.model = chart.isMade ? &chart.made.model : nullptr,
          .contours = chart.isMade ? &chart.contours : nullptr,
          .crs = chart.crs,
          .isZUp = run.options.isZUp,
          .date = DateOf(run)};
}

// Whether the kind of file is made by a library that opens its files itself, and may put others beside it.
bool IsMadeByLibrary(ExportKind kind) {
  return kind == ExportKind::Geopackage || kind == ExportKind::Geotiff || kind == ExportKind::Shapefile ||
         kind == ExportKind::Contours;
}

// What all outputs of a run are made of.
struct OutputParts {
  const ChartRun& run;
  ChartData chart;
  ExportRun exportRun;
};

// An output that isn't in its place yet; what can't be made or isn't wanted any more is taken away.
class Pending {
 public:
  Pending(const OutputParts& parts, const ChartOutput& output, OutputAccount& account)
      : account_(account), stale_(StaleCompanions(output.path, output.kind)) {
    Try([&] {
      if (IsMadeByLibrary(output.kind)) {
        folder_ = GrowingFolder(output.path);
        WriteByLibrary(output, parts);
      } else {
        file_ = GrowingFile(output.path);
        Write(output, parts);
      }
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

  void Write(const ChartOutput& output, const OutputParts& parts) {
    const ChartRun& run = parts.run;
    const ChartData& chart = parts.chart;
    const ExportRun& exportRun = parts.exportRun;
    if (output.kind == ExportKind::Csv) return WriteCsv(run.survey, exportRun, file_.File());
    if (output.kind == ExportKind::Gpx) return WriteGpx(run.survey, exportRun, file_.File());
    const Gis& gis = LoadGis(run.gisFolders);
    if (output.kind == ExportKind::GeoJson) {
      WriteGeoJson(
          chart, exportRun, [&] { return gis.toDegrees(chart.crs); }, file_.File());
      account_.note = UnitNote(run);
      return;
    }
    if (chart.crs.empty()) throw CantExport("no sounding is used");
    account_.note = chart.crs;
    const std::uint64_t leftOut = WriteXyz(
        run.survey, exportRun, [&] { return gis.toPlane(chart.crs); }, file_.File());
    if (leftOut > 0) account_.note += ", " + CountedThings(leftOut, "sounding") + " outside it left out";
  }

  void WriteByLibrary(const ChartOutput& output, const OutputParts& parts) {
    const ChartRun& run = parts.run;
    const ChartData& chart = parts.chart;
    const Gis& gis = LoadGis(run.gisFolders);
    const std::string path = folder_.InnerPath();
    account_.note = UnitNote(run);
    switch (output.kind) {
      case ExportKind::Geotiff:
        account_.note = chart.isZUp ? "heights" : "";
        return gis.writeGeotiff(chart, parts.exportRun, path);
      case ExportKind::Geopackage:
        if (chart.model == nullptr) account_.note = "without contours: " + run.chart.problem;
        return gis.writeGeopackage(run.survey, chart, parts.exportRun, path);
      default:
        return gis.writeContours(chart, parts.exportRun, output.driver, path);
    }
  }

  // Of contours: nobody would take feet for granted.
  static std::string UnitNote(const ChartRun& run) {
    return run.options.model.isInFeet ? "depths of contours in ft" : "";
  }

  OutputAccount& account_;
  std::vector<std::string> stale_;  // companions of an earlier file
  GrowingFile file_;                // one of the two grows
  GrowingFolder folder_;
  bool isInPlace_ = false;
};

// Why a file of that kind isn't even begun; empty: it is.
std::string HindranceOf(ExportKind kind, const ChartRun& run) {
  if (run.survey.SoundingCount() == 0) return "there are no soundings";
  const bool isForSoundings = kind == ExportKind::Geopackage && run.chart.crs.empty();
  return NeedsChart(kind) || (kind == ExportKind::Geopackage && !isForSoundings) ? run.chart.problem
                                                                                 : std::string();
}

}  // namespace

void WriteOutputs(ChartRun& run, Progress& progress) {
  const OutputParts parts = {run, ChartDataOf(run), {run.threads, Interrupted, &progress.Done()}};
  run.outputs.reserve(run.options.outputs.size() + 1);  // and the report
  std::deque<Pending> pending;
  for (const ChartOutput& output : run.options.outputs) {
    const bool isOfSoundings = !NeedsChart(output.kind);
    progress.Begin("writing " + output.path,
                   isOfSoundings ? static_cast<std::int64_t>(run.survey.SoundingCount()) : 0, "soundings");
    run.outputs.push_back({output.path});
    OutputAccount& account = run.outputs.back();
    account.problem = HindranceOf(output.kind, run);
    if (account.problem.empty()) pending.emplace_back(parts, output, account);
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
