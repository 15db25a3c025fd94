#include "app/chart/read_sources.h"

#include "app/chart/lines.h"
#include "app/chart/problem_words.h"
#include "app/chart/progress.h"
#include "app/interrupt.h"
#include "app/places.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/parallel.h"
#include "sounders/sounder_formats.h"

#include <numeric>

namespace sondrix {
namespace {

// Of the exception that is being handled.
std::string ProblemNow(const ChartSource& source) {
  try {
    throw;
  } catch (...) {
    const Fault fault = CaughtFault();
    const bool isChange = LengthOfFile(source.path) != source.length;
    return isChange && source.length > 0 ? "it was changed while it was read" : SourceProblem(fault);
  }
}

// Throws EndAsked, and what is no fault of the source.
void ReadOne(const ChartSource& source, const ReadOptions& options, const ReadWatch& watch,
             SourceReading& result) {
  const SounderFormat* format = nullptr;
  try {
    format = Recognise(source.path);
    if (format == nullptr) {
      result.problem =
          source.length == 0 ? "it is empty" : "neither a recording nor a log or a table of soundings";
      return;
    }
    result.kind = format->name;
    format->read(source.path, options, watch, result.reading);
  } catch (const EndAsked&) {
    throw;
  } catch (const CantRead& reason) {
    result.problem = reason.what();
    result.isGuess = format->isGuess;
    result.reading.trips.clear();
    return;
  } catch (...) {
    result.problem = ProblemNow(source);
    result.reading.trips.clear();
    return;
  }
  std::erase_if(result.reading.trips, [](const TripReading& trip) { return trip.soundings.empty(); });
  for (TripReading& trip : result.reading.trips) trip.soundings.Finish();
  if (!result.reading.trips.empty()) return;
  const std::string passedOver = CountsText(result.reading.passedOver);
  result.problem = "no soundings" + (passedOver.empty() ? "" : ": " + passedOver);
}

}  // namespace

std::vector<SourceReading> ReadSources(std::span<const ChartSource> sources, int threads,
                                       const std::function<ReadOptions()>& makeOptions, Progress& progress) {
  std::vector<SourceReading> readings(sources.size());
  const std::int64_t bytes =
      std::accumulate(sources.begin(), sources.end(), std::int64_t{0},
                      [](std::int64_t sum, const ChartSource& source) { return sum + source.length; });
  progress.Begin("reading", bytes, "bytes");
  const ReadWatch watch = {Interrupted, &progress.Done()};
  const auto makeWork = [&] {
    return [&, options = makeOptions()](std::size_t index) {
      if (Interrupted()) throw EndAsked();
      ReadOne(sources[index], options, watch, readings[index]);
    };
  };
  InParallel(sources.size(), threads, makeWork);
  return readings;
}

}  // namespace sondrix
