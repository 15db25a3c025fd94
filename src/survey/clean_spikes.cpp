#include "survey/clean_spikes.h"

#include "survey/median.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sondrix {
namespace {

constexpr float NoiseOfMad = 1.4826F;       // of a normal distribution
constexpr float NoiseOfResidual = 0.8165F;  // sqrt(2 / 3): the line between two neighbours has noise too
constexpr float MinNoise = 0.02F;           // metres
constexpr float MinNoiseOfDepth = 0.005F;
constexpr float SpikeNoises = 5;
constexpr float SlopeShare = 0.5F;

float MedianOf4(float a, float b, float c, float d) {
  const float low = std::max(std::min(a, b), std::min(c, d));
  const float high = std::min(std::max(a, b), std::max(c, d));
  return (low + high) / 2;
}

// The distance of a sounding from the line between its neighbours; a < i < b.
float Residual(const TrackSection& section, std::size_t a, std::size_t i, std::size_t b) {
  const double whole = section.way[b] - section.way[a];
  const double share = whole > 0 ? (section.way[i] - section.way[a]) / whole : 0.5;
  const float before = section.depth[a], behind = section.depth[b];
  return section.depth[i] - before - static_cast<float>(share) * (behind - before);
}

// The four nearest soundings on one side that aren't spikes, and the way to them.
struct Side {
  std::array<std::size_t, 5> at{};
  std::size_t count = 0;

  Side(const TrackSection& section, std::size_t from, int direction) {
    const auto size = static_cast<std::ptrdiff_t>(section.size());
    for (std::ptrdiff_t i = static_cast<std::ptrdiff_t>(from) + direction;
         i >= 0 && i < size && count < at.size(); i += direction) {
      const auto index = static_cast<std::size_t>(i);
      if (section.fate[index] == Fate::Used) at[count++] = index;
    }
  }

  // The running median of the slope, metres a metre.
  float Slope(const TrackSection& section) const {
    if (count < at.size()) return 0;
    std::array<float, 4> slopes{};
    for (std::size_t k = 0; k < slopes.size(); ++k) {
      const double way = section.way[at[k + 1]] - section.way[at[k]];
      slopes[k] = way != 0 ? (section.depth[at[k + 1]] - section.depth[at[k]]) / static_cast<float>(way) : 0;
    }
    return MedianOf4(slopes[0], slopes[1], slopes[2], slopes[3]);
  }
};

bool IsExplained(const TrackSection& section, std::size_t i) {
  const Side before(section, i, -1), behind(section, i, +1);
  if (before.count == 0 || behind.count == 0) return true;
  const float depth = section.depth[i];
  const float left = section.depth[before.at[0]], right = section.depth[behind.at[0]];
  if (depth >= std::min(left, right) && depth <= std::max(left, right)) return true;
  const std::array<const Side*, 2> sides{&before, &behind};
  const std::array<float, 2> slopes{before.Slope(section), behind.Slope(section)};
  const float steepest = std::max(std::abs(slopes[0]), std::abs(slopes[1]));
  const float noise = SpikeNoises * section.NoiseAt(i);
  for (std::size_t s = 0; s < sides.size(); ++s) {
    for (std::size_t k = 0; k < std::min<std::size_t>(2, sides[s]->count); ++k) {
      const std::size_t other = sides[s]->at[k];
      const auto way = static_cast<float>(section.way[i] - section.way[other]);
      const float expected = section.depth[other] + slopes[s] * way;
      if (std::abs(depth - expected) <= noise + SlopeShare * steepest * std::abs(way)) return true;
    }
  }
  return false;
}

// Near one of the soundings beside it, as nearly all are.
bool IsNear(const TrackSection& section, std::size_t i) {
  const float noise = SpikeNoises * section.NoiseAt(i);
  return std::abs(section.depth[i] - section.depth[i - 1]) <= noise ||
         std::abs(section.depth[i] - section.depth[i + 1]) <= noise;
}

}  // namespace

float DepthResolution(const SoundingList& soundings) {
  constexpr std::size_t sample = 2048;
  constexpr std::array<double, 5> steps{0.3048, 0.1, 0.03048, 0.05, 0.01};
  std::array<std::size_t, steps.size()> multiples{};
  std::size_t count = 0;
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / sample);
  for (std::size_t i = 0; i < soundings.size(); i += stride) {
    if (soundings[i].fate != Fate::Used) continue;
    ++count;
    const double depth = soundings[i].recorded;
    for (std::size_t s = 0; s < steps.size(); ++s) {
      // Depths hold whole millimetres.
      if (std::abs(depth - std::round(depth / steps[s]) * steps[s]) < 0.00051) ++multiples[s];
    }
  }
  for (std::size_t s = 0; s < steps.size(); ++s) {
    if (count > 0 && multiples[s] * 20 >= count * 19) return static_cast<float>(steps[s]);
  }
  return 0.001F;
}

void FindNoise(TrackSection& section, float resolution) {
  const std::size_t size = section.size();
  const std::size_t blocks = (size + TrackSection::NoiseBlock - 1) / TrackSection::NoiseBlock;
  std::vector<float> own(blocks);
  std::array<float, TrackSection::NoiseBlock> residuals{};
  for (std::size_t b = 0; b < blocks; ++b) {
    // The last block takes the soundings before it in, so that it isn't judged by a few.
    const std::size_t end = std::min(size, (b + 1) * TrackSection::NoiseBlock);
    const std::size_t begin = end > TrackSection::NoiseBlock ? end - TrackSection::NoiseBlock : 0;
    std::size_t count = 0;
    for (std::size_t i = std::max<std::size_t>(begin, 1); i + 1 < size && i < end; ++i) {
      residuals[count++] = std::abs(Residual(section, i - 1, i, i + 1));
    }
    const float depth = section.depth[(begin + end) / 2];
    float noise = std::max({MinNoise, resolution / 2, MinNoiseOfDepth * depth});
    if (count > 0) {
      noise =
          std::max(noise, NoiseOfMad * NoiseOfResidual * UpperMedianOf(std::span(residuals.data(), count)));
    }
    own[b] = noise;
  }
  section.noise.resize(blocks);
  for (std::size_t b = 0; b < blocks; ++b) {
    section.noise[b] = std::max({own[b], own[b > 0 ? b - 1 : 0], own[std::min(b + 1, blocks - 1)]});
  }
}

void FindSpikes(TrackSection& section) {
  const std::size_t size = section.size();
  if (size < 5) return;
  std::vector<std::uint32_t> found;
  for (int pass = 0; pass < 2; ++pass) {
    found.clear();
    for (std::size_t i = 1; i + 1 < size; ++i) {
      if (IsNear(section, i) && section.fate[i] == Fate::Used) continue;
      if (!IsExplained(section, i)) found.push_back(static_cast<std::uint32_t>(i));
    }
    std::fill(section.fate.begin(), section.fate.end(), Fate::Used);
    for (const std::uint32_t i : found) section.fate[i] = Fate::Spike;
  }
}

}  // namespace sondrix
