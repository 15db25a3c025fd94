#include "survey/far_places.h"

#include "geo/near_places.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace sondrix {
namespace {

// Cells are cubes in space, so that neither a pole nor 180 degrees is a place of its own.
constexpr double CellSize = 15'000;  // metres
constexpr int KeyBits = 10;          // of a cell's number along each axis
constexpr int Middle = 1 << (KeyBits - 1);
static_assert(MeanRadius / CellSize < Middle - 1);

struct CellPlace {
  int x, y, z;
};

std::uint32_t KeyAt(const CellPlace& place) {
  return static_cast<std::uint32_t>(place.x << 2 * KeyBits | place.y << KeyBits | place.z);
}

CellPlace PlaceOf(std::uint32_t key) {
  constexpr std::uint32_t mask = (1U << KeyBits) - 1;
  return {static_cast<int>(key >> 2 * KeyBits), static_cast<int>(key >> KeyBits & mask),
          static_cast<int>(key & mask)};
}

bool IsCounted(const Sounding& sounding) { return sounding.fate == Fate::Used && sounding.HasPosition(); }

template <class Take>
void ForEachCounted(const SoundingList& soundings, const Take& take) {
  for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
    for (const Sounding& sounding : soundings.Block(b)) {
      if (IsCounted(sounding)) take(sounding);
    }
  }
}

// Nearly every survey: all within the size of a cell.
bool IsSmall(const Survey& survey) {
  double west = 180, east = -180, south = 90, north = -90;  // degrees
  for (const Trip& trip : survey.trips) {
    ForEachCounted(trip.soundings, [&](const Sounding& sounding) {
      west = std::min(west, sounding.longitude);
      east = std::max(east, sounding.longitude);
      south = std::min(south, sounding.latitude);
      north = std::max(north, sounding.latitude);
    });
  }
  return (east - west + north - south) * MetresOfDegree < CellSize;
}

}  // namespace

FarPlaces::FarPlaces(const Survey& survey) {
  if (IsSmall(survey)) return;
  CountCells(survey);
  const std::vector<std::uint64_t> groups = Group();
  const std::uint64_t most = *std::max_element(groups.begin(), groups.end());
  bool areAllNear = true;
  for (auto& [key, cell] : cells_) {
    cell.isFar = groups[cell.group] <= most / 2;
    areAllNear = areAllNear && !cell.isFar;
  }
  if (areAllNear) return;
  MeasureDistances();
  CountTrips(survey);
}

FarPlaces::Key FarPlaces::KeyOf(const Sounding& sounding) {
  constexpr double radians = std::numbers::pi / 180, scale = MeanRadius / CellSize;
  const double latitude = sounding.latitude * radians, longitude = sounding.longitude * radians;
  const auto number = [](double along) { return static_cast<int>(std::floor(along * scale)) + Middle; };
  return KeyAt({number(std::cos(latitude) * std::cos(longitude)),
                number(std::cos(latitude) * std::sin(longitude)), number(std::sin(latitude))});
}

void FarPlaces::CountCells(const Survey& survey) {
  for (const Trip& trip : survey.trips) {
    ForEachCounted(trip.soundings, [&](const Sounding& sounding) {
      const Key key = KeyOf(sounding);
      Cell& cell = cells_[key];
      if (cell.count++ > 0) return;
      cell.key = key;
      order_.push_back(key);
    });
  }
}

std::vector<std::uint64_t> FarPlaces::Group() {
  std::vector<std::uint64_t> counts = {0};
  std::vector<Key> waiting;
  const auto take = [&](Cell& cell) {
    if (cell.group > 0) return;
    cell.group = counts.size() - 1;
    counts.back() += cell.count;
    waiting.push_back(cell.key);
  };
  for (const Key first : order_) {
    if (cells_[first].group > 0) continue;
    counts.push_back(0);
    for (take(cells_[first]); !waiting.empty();) {
      const CellPlace middle = PlaceOf(waiting.back());
      waiting.pop_back();
      for (int i = 0; i < 27; ++i) {
        const auto beside =
            cells_.find(KeyAt({middle.x + i / 9 - 1, middle.y + i / 3 % 3 - 1, middle.z + i % 3 - 1}));
        if (beside != cells_.end()) take(beside->second);
      }
    }
  }
  return counts;
}

void FarPlaces::MeasureDistances() {
  for (auto& [key, cell] : cells_) {
    if (!cell.isFar) continue;
    const CellPlace place = PlaceOf(key);
    cell.distance = std::numeric_limits<double>::infinity();
    for (const auto& [otherKey, other] : cells_) {
      if (other.isFar) continue;
      const CellPlace to = PlaceOf(otherKey);
      cell.distance =
          std::min(cell.distance, CellSize * std::hypot(to.x - place.x, to.y - place.y, to.z - place.z));
    }
  }
}

void FarPlaces::CountTrips(const Survey& survey) {
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    FarSoundings far = {.trip = t, .distance = std::numeric_limits<double>::infinity()};
    std::uint64_t used = 0;
    ForEachCounted(survey.trips[t].soundings, [&](const Sounding& sounding) {
      const Cell& cell = cells_.at(KeyOf(sounding));
      ++used;
      if (!cell.isFar) return;
      ++far.count;
      far.distance = std::min(far.distance, cell.distance);
    });
    far.isAll = far.count == used;
    if (far.count > 0) trips_.push_back(far);
  }
}

}  // namespace sondrix
