#include "app/chart/chart_steps.h"

#include "app/chart/chart_run.h"
#include "app/chart/gis_library.h"
#include "app/chart/plane_soundings.h"
#include "app/chart/progress.h"
#include "app/interrupt.h"
#include "chart/transform.h"
#include "core/fault.h"
#include "exports/export_run.h"
#include "exports/gis.h"
#include "exports/shore_file.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace sondrix {
namespace {

bool NeedsProjection(const ChartRun& run) {
  return NeedsModel(run) ||
         std::any_of(run.options.outputs.begin(), run.options.outputs.end(),
                     [](const ChartOutput& output) { return output.kind == ExportKind::Xyz; });
}

// Around the soundings, so far that a shore belongs to them: half as far as they reach, and 500 m at least.
PlaneBox BoxAround(const std::vector<PlaneSounding>& soundings) {
  constexpr double least = 500;  // metres
  PlaneBox box = {soundings[0].x, soundings[0].y, soundings[0].x, soundings[0].y};
  for (const PlaneSounding& sounding : soundings) {
    box.west = std::min(box.west, sounding.x);
    box.east = std::max(box.east, sounding.x);
    box.south = std::min(box.south, sounding.y);
    box.north = std::max(box.north, sounding.y);
  }
  const double margin = std::max(least, std::hypot(box.east - box.west, box.north - box.south) / 2);
  return {box.west - margin, box.south - margin, box.east + margin, box.north + margin};
}

Shore ReadShoreOf(const ChartRun& run, const PlaneBox& box) {
  const std::string& path = run.options.model.shore;
  try {
    return LoadGis(run.gisFolders).readShore(path, run.chart.crs, box, Interrupted);
  } catch (const CantExport& reason) {
    throw CantModel("--shore " + path + ": " + reason.what());
  }
}

void MakeModel(ChartRun& run, const FarPlaces& far, Progress& progress) {
  const ModelChoice& choice = run.options.model;
  ChartResult& chart = run.chart;
  const Gis& gis = LoadGis(run.gisFolders);
  progress.Begin("projecting", static_cast<std::int64_t>(run.survey.SoundingCount()), "soundings");
  std::vector<PlaneSounding> soundings = PlaneSoundingsOf(
      run.survey, far, {run.threads, [&] { return gis.toPlane(chart.crs); }, Interrupted, &progress.Done()});
  if (soundings.empty()) throw CantModel("no sounding has a place in " + chart.crs);
  Shore shore;
  if (!choice.shore.empty()) {
    progress.Begin("reading the shore", 0, {});
    shore = ReadShoreOf(run, BoxAround(soundings));
  }
  progress.Begin("making the grid", 0, {});
  const ModelOptions options = {.cell = choice.cell,
                                .reach = choice.reach,
                                .method = choice.method,
                                .tension = choice.tension,
                                .shore = choice.shore.empty() ? nullptr : &shore,
                                .threads = run.threads,
                                .isToEnd = Interrupted,
                                .begin = [&](std::string_view step) { progress.Begin(step, 0, {}); }};
  chart.made = MakeDepthModel(std::move(soundings), options);
  progress.Begin("drawing contours", 0, {});
  ContourDepths wanted = choice.contours;
  wanted.unit = choice.MetresOfUnit();
  chart.depths = DepthsToDraw(wanted, chart.made.model);
  chart.isStepCoarser = wanted.list.empty() && IsStepTooFine(wanted.step, chart.made.model);
  chart.contours = ContoursOf(chart.made.model, chart.depths, Interrupted);
  for (ContourLine& line : chart.contours.lines) line.depth = choice.InUnit(line.depth);
  for (DepthArea& area : chart.contours.areas) {
    area.depthMin = choice.InUnit(area.depthMin);
    area.depthMax = choice.InUnit(area.depthMax);
  }
  chart.isMade = true;
}

}  // namespace

bool NeedsModel(const ChartRun& run) {
  return std::any_of(run.options.outputs.begin(), run.options.outputs.end(), [](const ChartOutput& output) {
    return NeedsChart(output.kind) || output.kind == ExportKind::Geopackage;
  });
}

void DrawChart(ChartRun& run, Progress& progress) {
  ChartResult& chart = run.chart;
  progress.Begin("looking for soundings far from the rest", 0, {});
  const FarPlaces far(run.survey);
  chart.far = far.Trips();
  if (!NeedsProjection(run)) return;
  const std::string zone = ZoneOfMost(run.survey, far);
  chart.crs = run.options.crs.empty() || zone.empty() ? zone : run.options.crs;
  if (!NeedsModel(run)) return;
  try {
    if (zone.empty()) throw CantModel("no sounding is used");
    MakeModel(run, far, progress);
  } catch (const CantModel& reason) {
    chart.problem = reason.what();
  } catch (const CantProject& reason) {
    chart.problem = reason.what();
  } catch (const CantExport& reason) {
    chart.problem = reason.what();
  } catch (const std::bad_alloc&) {
    chart.problem = "the grid and its contours need more memory than there is";
  }
  if (!chart.isMade) {
    chart.made = {};
    chart.contours = {};
  }
}

}  // namespace sondrix
