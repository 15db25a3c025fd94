#include "survey/parts.h"

#include "core/files.h"
#include "core/text.h"
#include "geo/near_places.h"
#include "survey/survey.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace sondrix {
namespace {

constexpr double LongestPause = 60, MostOverlap = 2;         // seconds
constexpr double FarthestTimed = 100, FarthestUntimed = 30;  // metres

// A source's name with "#" for each number in it, and the numbers.
struct NumberedName {
  std::string stem;
  std::vector<std::uint64_t> numbers;
};

NumberedName NumberedNameOf(std::string_view path) {
  const std::string_view name = FileNameOf(path);
  NumberedName numbered = {std::string(path.substr(0, path.size() - name.size())), {}};
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (!IsDigit(name[i])) {
      numbered.stem += name[i];
      continue;
    }
    if (i == 0 || !IsDigit(name[i - 1])) {
      numbered.stem += '#';
      numbered.numbers.push_back(0);
    }
    // What is too long for a number only has to be some number.
    numbered.numbers.back() = numbered.numbers.back() * 10 + static_cast<std::uint64_t>(name[i] - '0');
  }
  return numbered;
}

bool IsNext(const std::vector<std::uint64_t>& before, const std::vector<std::uint64_t>& after) {
  int differing = 0;
  bool isByOne = true;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    ++differing;
    isByOne = after[i] == before[i] + 1;
  }
  return differing == 1 && isByOne;
}

// The first and the last place of a trip and their times.
struct Ends {
  Sounding first, last;
};

Ends EndsOf(const SoundingList& soundings) {
  Ends ends;
  for (std::size_t i = 0; i < soundings.size() && !ends.first.HasPosition(); ++i) ends.first = soundings[i];
  for (std::size_t i = soundings.size(); i > 0 && !ends.last.HasPosition(); --i) ends.last = soundings[i - 1];
  return ends;
}

struct Part {
  std::uint32_t trip = 0;
  NumberedName name;
  Ends ends;
};

bool GoesOn(const Part& before, const Part& after) {
  const Sounding &from = before.ends.last, &to = after.ends.first;
  const double metres = MetresBetween(from.longitude, from.latitude, to.longitude, to.latitude);
  const double pause = to.time - from.time;
  if (std::isnan(pause)) return metres <= FarthestUntimed && IsNext(before.name.numbers, after.name.numbers);
  return metres <= FarthestTimed && pause >= -MostOverlap && pause <= LongestPause;
}

}  // namespace

void JoinParts(Survey& survey) {
  std::map<std::pair<std::string, std::string>, std::vector<Part>> families;
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    Trip& trip = survey.trips[t];
    trip.journey = t;
    trip.part = 0;
    Part part = {t, NumberedNameOf(trip.path), EndsOf(trip.soundings)};
    if (part.name.numbers.empty() || !part.ends.first.HasPosition()) continue;
    families[{part.name.stem, trip.kind}].push_back(std::move(part));
  }
  for (auto& [key, parts] : families) {
    std::sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) {
      return std::tie(a.name.numbers, a.trip) < std::tie(b.name.numbers, b.trip);
    });
    for (std::size_t i = 1; i < parts.size(); ++i) {
      if (parts[i].name.numbers == parts[i - 1].name.numbers || !GoesOn(parts[i - 1], parts[i])) continue;
      Trip& trip = survey.trips[parts[i].trip];
      const Trip& before = survey.trips[parts[i - 1].trip];
      trip.journey = before.journey;
      trip.part = before.part + 1;
    }
  }
}

}  // namespace sondrix
