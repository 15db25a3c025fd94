#include "survey/levels/track_passes.h"

#include "core/files.h"
#include "core/parallel.h"
#include "geo/near_places.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

namespace sondrix {
namespace {

std::vector<TrackPass> PassesOf(const SoundingList& soundings, std::uint32_t trip, const CellRows& cells,
                                double reference) {
  std::vector<TrackPass> passes;
  bool isOpen = false;
  std::uint32_t index = 0;
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      const std::uint32_t i = index++;
      if (sounding.beginsLine) isOpen = false;
      if (sounding.fate != Fate::Used) continue;
      const std::uint64_t cell =
          cells.CellAt(WrappedLongitude(sounding.longitude, reference), sounding.latitude);
      if (!isOpen || passes.back().cell != cell) passes.push_back({cell, trip, i, i});
      passes.back().last = i;
      isOpen = true;
    }
  }
  return passes;
}

}  // namespace

CellRows::CellRows(double size) : north_(MetresOfDegree / size) {
  for (int band = 0; band < Bands; ++band) {
    const double latitude = (band + 0.5) / 2 - 90;
    east_.push_back(north_ * std::cos(latitude / 180 * std::numbers::pi));
  }
}

std::uint64_t CellRows::CellAt(double longitude, double latitude) const {
  const auto band = static_cast<std::size_t>(std::clamp((latitude + 90) * 2, 0.0, Bands - 1.0));
  return Key(static_cast<std::int32_t>(std::floor(longitude * east_[band])),
             static_cast<std::int32_t>(std::floor(latitude * north_)));
}

double WrappedLongitude(double longitude, double reference) {
  if (longitude - reference > 180) return longitude - 360;
  return longitude - reference < -180 ? longitude + 360 : longitude;
}

std::vector<TrackPass> TrackPasses(const Survey& survey, const CellRows& cells, double reference, int threads,
                                   const std::function<bool()>& isToEnd) {
  std::vector<std::vector<TrackPass>> ofTrips(survey.trips.size());
  InParallel(survey.trips.size(), threads, [&] {
    return [&](std::size_t t) {
      if (isToEnd && isToEnd()) throw EndAsked();
      ofTrips[t] = PassesOf(survey.trips[t].soundings, static_cast<std::uint32_t>(t), cells, reference);
    };
  });
  std::size_t count = 0;
  for (const std::vector<TrackPass>& passes : ofTrips) count += passes.size();
  std::vector<TrackPass> all;
  all.reserve(count);
  for (std::vector<TrackPass>& passes : ofTrips) {
    all.insert(all.end(), passes.begin(), passes.end());
    passes = {};
  }
  std::sort(all.begin(), all.end(), [](const TrackPass& a, const TrackPass& b) {
    return std::tie(a.cell, a.trip, a.first) < std::tie(b.cell, b.trip, b.first);
  });
  return all;
}

}  // namespace sondrix
