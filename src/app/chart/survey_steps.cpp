#include "app/chart/survey_steps.h"

#include "app/chart/chart_run.h"
#include "app/chart/progress.h"
#include "app/interrupt.h"
#include "core/files.h"
#include "core/parallel.h"
#include "survey/clean.h"
#include "survey/offset.h"
#include "survey/parts.h"

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace sondrix {
namespace {

void ForEachTrip(ChartRun& run, Progress& progress, std::string_view step,
                 const std::function<void(std::size_t index)>& work) {
  progress.Begin(step, static_cast<std::int64_t>(run.survey.SoundingCount()), "soundings");
  const auto makeWork = [&] {
    return [&](std::size_t index) {
      if (Interrupted()) throw EndAsked();
      work(index);
      progress.Done() += static_cast<std::int64_t>(run.survey.trips[index].soundings.size());
    };
  };
  InParallel(run.survey.trips.size(), run.threads, makeWork);
}

void Clean(ChartRun& run, Progress& progress) {
  std::vector<Trip>& trips = run.survey.trips;
  if (!run.options.cleans) {
    ForEachTrip(run, progress, "sorting", [&](std::size_t t) { CleanOff(trips[t]); });
    return;
  }
  std::vector<Stretches> stretches(trips.size());
  ForEachTrip(run, progress, "cleaning", [&](std::size_t t) { stretches[t] = CleanTrip(trips[t]); });
  progress.Begin("comparing trips where they cross", 0, {});
  CleanByCrossings(run.survey, stretches);
}

void Number(ChartRun& run, Progress& progress) {
  ForEachTrip(run, progress, "numbering", [&](std::size_t t) {
    SoundingList& soundings = run.survey.trips[t].soundings;
    for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
      for (Sounding& sounding : soundings.Block(b)) sounding.trip = static_cast<std::uint32_t>(t);
    }
  });
}

void Correct(ChartRun& run, Progress& progress) {
  const ChartOptions& options = run.options;
  const bool isMoved = options.offsetRight != 0 || options.offsetAhead != 0;
  if (!isMoved && options.draft == 0) return;
  std::atomic<std::uint64_t> stay = 0;
  ForEachTrip(run, progress, "correcting", [&](std::size_t t) {
    SoundingList& soundings = run.survey.trips[t].soundings;
    if (isMoved) stay += ApplyOffset(soundings, options.offsetRight, options.offsetAhead);
    if (options.draft != 0) ApplyDraft(soundings, options.draft);
  });
  if (stay > 0) {
    run.remarks.push_back(std::to_string(stay) +
                          " soundings stay at the antenna: their lines show no course");
  }
}

}  // namespace

void SettleSurvey(ChartRun& run, Progress& progress) {
  Number(run, progress);
  JoinParts(run.survey);
  Clean(run, progress);
  Correct(run, progress);
  run.trips.resize(run.survey.trips.size());
  ForEachTrip(run, progress, "counting", [&](std::size_t t) {
    const SoundingList& soundings = run.survey.trips[t].soundings;
    run.trips[t] = {CountFates(soundings), TimeRangeOf(soundings)};
  });
}

}  // namespace sondrix
