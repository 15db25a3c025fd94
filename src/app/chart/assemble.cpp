#include "app/chart/assemble.h"

#include "app/chart/chart_run.h"
#include "core/code_page.h"
#include "core/files.h"
#include "sounders/table/table_places.h"
#include "survey/place_order.h"
#include "survey/same_source.h"
#include "survey/sounding_probe.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace sondrix {
namespace {

// "2021/lake.sl2" of "trips/2021/lake.sl2"; the name alone where there is no folder.
std::string NameWithFolder(std::string_view path) {
  const std::string_view name = FileNameOf(path);
  std::string_view folder = path.substr(0, path.size() - name.size());
  while (!folder.empty() && IsSeparator(folder.back())) folder.remove_suffix(1);
  const std::string_view last = FileNameOf(folder);
  return last.empty() ? std::string(name) : std::string(last) + "/" + std::string(name);
}

void MakeNamesDiffer(std::vector<Trip>& trips) {
  std::map<std::string, int> count;
  for (const Trip& trip : trips) ++count[trip.name];
  for (Trip& trip : trips) {
    if (count[trip.name] > 1 && trip.name == ShownName(FileNameOf(trip.path))) {
      trip.name = ShownName(NameWithFolder(trip.path));
    }
  }
  std::set<std::string> taken;
  for (Trip& trip : trips) {
    const std::string name = trip.name;
    for (int number = 2; !taken.insert(trip.name).second; ++number) {
      trip.name = name + " (" + std::to_string(number) + ")";
    }
  }
}

// What is kept gets the name that it has without the rest.
void LeaveRepeatsOut(ChartRun& run) {
  std::vector<Trip>& trips = run.survey.trips;
  std::vector<std::string> names;
  names.reserve(trips.size());
  for (const Trip& trip : trips) names.push_back(trip.name);
  MakeNamesDiffer(trips);
  const std::vector<RepeatedTrip> repeats = FindRepeatedTrips(run.survey);
  std::vector<Trip> kept;
  auto repeat = repeats.begin();
  for (SourceAccount& account : run.sources) {
    const std::size_t first = account.firstTrip, end = first + account.tripCount;
    account.firstTrip = kept.size();
    for (std::size_t t = first; t < end; ++t) {
      if (repeat != repeats.end() && repeat->trip == t) {
        account.leftOut.push_back({trips[t].name, repeat->words, trips[t].soundings.size()});
        ++repeat;
      } else {
        kept.push_back(std::move(trips[t]));
        kept.back().name = std::move(names[t]);
      }
    }
    account.tripCount = kept.size() - account.firstTrip;
  }
  trips = std::move(kept);
  MakeNamesDiffer(trips);
}

// Tables whose order of coordinates is open are put beside the other sources.
void SettleOrders(std::vector<SourceReading>& readings) {
  const auto isOpen = [](const SourceReading& reading) { return reading.reading.isOrderOpen; };
  if (std::none_of(readings.begin(), readings.end(), isOpen)) return;
  std::vector<SoundingSpan> settled;
  for (const SourceReading& reading : readings) {
    if (isOpen(reading)) continue;
    for (const TripReading& trip : reading.reading.trips) settled.push_back(SpanOf(trip.soundings));
  }
  for (SourceReading& reading : readings) {
    if (!isOpen(reading)) continue;
    for (TripReading& trip : reading.reading.trips) {
      if (!LiesBesideExchanged(SpanOf(trip.soundings), settled)) continue;
      SwapPlaces(trip.soundings);
      reading.reading.takenFor.emplace_back(
          "latitude and longitude the other way round: so it lies beside other sources");
    }
  }
}

}  // namespace

std::string ShownName(std::string_view name) {
  std::string shown = ValidUtf8(name);
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = '?';
  }
  return shown;
}

void Assemble(std::span<const ChartSource> sources, std::vector<SourceReading>& readings, ChartRun& run) {
  SettleOrders(readings);
  std::vector<Trip>& trips = run.survey.trips;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    Reading& reading = readings[i].reading;
    SourceAccount account;
    account.source = sources[i];
    account.kind = readings[i].kind;
    account.problem = readings[i].problem;
    account.isGuess = readings[i].isGuess;
    account.takenFor = std::move(reading.takenFor);
    account.remarks = std::move(reading.remarks);
    account.passedOver = reading.passedOver;
    account.firstTrip = trips.size();
    account.tripCount = reading.trips.size();
    for (TripReading& trip : reading.trips) {
      account.soundings += trip.soundings.size();
      const std::string_view name = trip.name.empty() ? FileNameOf(sources[i].path) : trip.name;
      trips.push_back({.name = ShownName(name),
                       .path = sources[i].path,
                       .kind = account.kind,
                       .soundings = std::move(trip.soundings)});
    }
    run.sources.push_back(std::move(account));
  }
  LeaveRepeatsOut(run);
  for (std::size_t t = 0; t < trips.size(); ++t) trips[t].journey = static_cast<std::uint32_t>(t);
}

}  // namespace sondrix
