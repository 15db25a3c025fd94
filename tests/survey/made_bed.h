#pragma once

#include "survey/clean.h"

#include <algorithm>
#include <random>

// Beds along a track whose true depth is known, trips over them, and wrong soundings planted in the trips.
namespace sondrix::made {

using Random = std::mt19937_64;
inline double Between(Random& random, double low, double high) {
  return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}
inline double Normal(Random& random) {
  return std::sqrt(-2 * std::log(1 - Between(random, 0, 1))) * std::cos(Between(random, 0, 6.283185307));
}

struct BedKind {
  bool hasSlopes = false;    // of 45 degrees
  bool hasSteps = false;     // of 5 m, upright
  bool hasTrenches = false;  // and ridges: two such steps 10 to 50 m apart
  double every = 300;        // metres between them
  double shallowest = 3, deepest = 30;
};

struct Knot {
  double way = 0, depth = 0;
};

inline std::vector<Knot> MakeBed(const BedKind& kind, double length, Random& random) {
  const auto inside = [&](double depth) { return std::clamp(depth, kind.shallowest, kind.deepest); };
  std::vector<Knot> bed{{0, Between(random, kind.shallowest, kind.deepest)}};
  const auto go = [&](double way, double depth) { bed.push_back({bed.back().way + way, depth}); };
  const auto step = [&] {
    const double depth = bed.back().depth;
    const bool isDown =
        depth - 5 < kind.shallowest || (depth + 5 <= kind.deepest && Between(random, 0, 1) < 0.5);
    go(1e-6, isDown ? depth + 5 : depth - 5);
  };
  while (bed.back().way < length) {
    const double run = Between(random, 0.3, 1.7) * kind.every;
    go(run, inside(bed.back().depth + Between(random, -0.03, 0.03) * run));
    if (kind.hasTrenches) {
      const double floor = bed.back().depth;
      step();
      go(Between(random, 10, 50), bed.back().depth);
      go(1e-6, floor);
    } else if (kind.hasSteps && (!kind.hasSlopes || Between(random, 0, 1) < 0.5)) {
      step();
    } else if (kind.hasSlopes) {
      const double depth = Between(random, kind.shallowest, kind.deepest);
      go(std::abs(depth - bed.back().depth), depth);
    }
  }
  return bed;
}

struct Sounder {
  double spacing = 1;                        // metres
  double noise = 0.03, noiseOfDepth = 0.01;  // metres, share
  double resolution = 0.01;                  // metres
  std::size_t held = 1;                      // soundings at one place
  bool hasTimes = true;
};

// North along a meridian, or east across it.
inline Sounding SoundingAt(double north, double east, double depth, double time = Unknown) {
  constexpr double MetresOfDegree = 111194.93;
  Sounding sounding;
  sounding.latitude = KeptDegrees(47 + north / MetresOfDegree);
  sounding.longitude = KeptDegrees(8 + east / (MetresOfDegree * std::cos(47 * 0.017453292519943295)));
  sounding.recorded = sounding.depth = KeptMetres(depth);
  sounding.time = time;
  return sounding;
}

enum class Planted : std::uint8_t { Nothing, Spike, Stretch };

struct MadeTrip {
  Trip trip;
  std::vector<Planted> planted;
  std::vector<std::size_t> stretches;  // their first soundings
};

// Stretches of 5 to 500 soundings at half or double the depth or 8 m off.
inline void PlantStretches(MadeTrip& made, std::vector<double>& depths, Random& random) {
  made.planted.assign(depths.size(), Planted::Nothing);
  for (std::size_t at = 100; at + 700 < depths.size();) {
    const auto length = static_cast<std::size_t>(std::lround(5 * std::pow(100, Between(random, 0, 1))));
    const auto first = depths.begin() + static_cast<std::ptrdiff_t>(at);
    const double shallowest = *std::min_element(first, first + static_cast<std::ptrdiff_t>(length));
    const auto what = static_cast<int>(Between(random, 0, shallowest > 9 ? 4 : 3));
    for (std::size_t i = at; i < at + length; ++i) {
      depths[i] = what == 0 ? depths[i] / 2 : what == 1 ? depths[i] * 2 : depths[i] + (what == 2 ? 8 : -8);
      made.planted[i] = Planted::Stretch;
    }
    made.stretches.push_back(at);
    at += length + 60 + static_cast<std::size_t>(static_cast<double>(length) * Between(random, 2, 12));
  }
}

// A trip of so many soundings; with wrong ones: 1 % spikes, and stretches.
inline MadeTrip MakeTrip(const BedKind& kind, const Sounder& sounder, std::size_t count, bool hasWrong,
                         std::uint64_t seed) {
  Random random(seed);
  const std::vector<Knot> bed = MakeBed(kind, static_cast<double>(count) * sounder.spacing, random);
  MadeTrip made;
  std::vector<double> depths(count);
  for (std::size_t i = 0, k = 1; i < count; ++i) {
    const double way = static_cast<double>(i) * sounder.spacing;
    while (k + 1 < bed.size() && bed[k].way < way) ++k;
    const Knot &a = bed[k - 1], &b = bed[k];
    depths[i] = a.depth + (b.depth - a.depth) * std::clamp((way - a.way) / (b.way - a.way), 0.0, 1.0);
  }
  made.planted.assign(count, Planted::Nothing);
  if (hasWrong) PlantStretches(made, depths, random);
  for (std::size_t i = 5; hasWrong && i + 5 < count; ++i) {
    if (made.planted[i] != Planted::Nothing || Between(random, 0, 1) >= 0.01) continue;
    depths[i] *= Between(random, 0, 1) < 0.5 ? Between(random, 0.2, 0.6) : Between(random, 1.6, 3);
    made.planted[i] = Planted::Spike;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double told = depths[i] + Normal(random) * (sounder.noise + sounder.noiseOfDepth * depths[i]);
    const double step = std::max(1.0, std::round(told / sounder.resolution)) * sounder.resolution;
    const double north = static_cast<double>(i / sounder.held * sounder.held) * sounder.spacing;
    const double time = sounder.hasTimes ? 1.7e9 + static_cast<double>(i) * sounder.spacing / 2 : Unknown;
    made.trip.soundings.Add(SoundingAt(north, 0, step, KeptSeconds(time)));
  }
  return made;
}

// Counts of what became of sound soundings, spikes and stretches; a stretch is found if half of it is.
struct Score {
  double sound = 0, soundLost = 0, spikes = 0, spikesFound = 0, stretches = 0, stretchesFound = 0;

  void Add(const MadeTrip& made) {
    for (std::size_t i = 0; i < made.planted.size(); ++i) {
      const bool isFound = made.trip.soundings[i].fate != Fate::Used;
      if (made.planted[i] == Planted::Nothing) ++sound, soundLost += isFound;
      if (made.planted[i] == Planted::Spike) ++spikes, spikesFound += isFound;
    }
    for (const std::size_t first : made.stretches) {
      std::size_t length = 0, found = 0;
      for (std::size_t i = first; i < made.planted.size() && made.planted[i] == Planted::Stretch; ++i) {
        ++length;
        if (made.trip.soundings[i].fate != Fate::Used) ++found;
      }
      ++stretches;
      if (2 * found >= length) ++stretchesFound;
    }
  }
};

}  // namespace sondrix::made
