#include "app/chart/write_outputs.h"

#include "app/chart/chart_run.h"
#include "app/chart/progress.h"
#include "app/chart/report.h"
#include "app/interrupt.h"
#include "app/places.h"
#include "core/fault.h"
#include "core/files.h"
#include "exports/csv.h"
#include "exports/gpx.h"

#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace sondrix {
namespace {

// An output that isn't in its place yet; what can't be made or isn't wanted any more is taken away.
class Pending {
 public:
  Pending(OutputAccount& account, const std::function<void(OutputFile& file)>& write) : account_(account) {
    Try([&] {
      file_ = GrowingFile(account_.path);
      write(file_.File());
    });
  }
  Pending(Pending&&) = default;
  ~Pending() {
    if (file_.IsOpen()) file_.TakeAway();
  }

  void PutInPlace() {
    if (!account_.problem.empty()) return;
    Try([this] { file_.PutInPlace(); });
    if (account_.problem.empty()) account_.bytes = LengthOfFile(account_.path);
  }

 private:
  void Try(const std::function<void()>& step) {
    try {
      step();
    } catch (const EndAsked&) {
      file_.TakeAway();
      throw;
    } catch (...) {
      account_.problem = CaughtFault().Description();
      file_.TakeAway();
    }
  }

  OutputAccount& account_;
  GrowingFile file_;
};

void WriteOne(ExportKind kind, const ChartRun& run, const ExportRun& exportRun, OutputFile& file) {
  switch (kind) {
    case ExportKind::Csv:
      return WriteCsv(run.survey, exportRun, file);
    case ExportKind::Gpx:
      return WriteGpx(run.survey, exportRun, file);
  }
}

}  // namespace

void WriteOutputs(ChartRun& run, Progress& progress) {
  const auto soundings = static_cast<std::int64_t>(run.survey.SoundingCount());
  const ExportRun exportRun = {run.threads, Interrupted, &progress.Done()};
  run.outputs.reserve(run.options.outputs.size() + 1);  // and the report
  std::vector<Pending> pending;
  for (const ChartOutput& output : run.options.outputs) {
    progress.Begin("writing " + output.path, soundings, "soundings");
    run.outputs.push_back({output.path});
    if (soundings == 0) {
      run.outputs.back().problem = "there are no soundings";
      continue;
    }
    pending.emplace_back(run.outputs.back(),
                         [&](OutputFile& file) { WriteOne(output.kind, run, exportRun, file); });
  }
  if (Interrupted()) throw EndAsked();
  for (Pending& one : pending) one.PutInPlace();
}

void WriteReport(ChartRun& run) {
  if (run.options.report.empty()) return;
  const std::string text = ReportText(run);
  run.outputs.reserve(run.outputs.size() + 1);
  run.outputs.push_back({run.options.report});
  Pending report(run.outputs.back(), [&text](OutputFile& file) { file.Write(text); });
  report.PutInPlace();
}

}  // namespace sondrix
