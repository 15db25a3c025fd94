#include "survey/clean_scatter.h"

#include "survey/median.h"
#include "survey/track_pieces.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sondrix {
namespace {

constexpr std::size_t WindowSize = 16, WindowStride = 8;  // soundings
constexpr float LeastScatter = 2;                         // metres
constexpr float LeastScatterOfDepth = 0.04F;
constexpr double MostBetween = 50;  // metres of way
constexpr float ScatterOfUsual = 4;
constexpr float MostLost = 0.5F, MostLostBesideGap = 0.2F;  // shares of a run
constexpr float DeviationOfMedian = 1.4826F * 0.8165F;      // as for the noise

// Whether enough soundings differ from the next one that a window can scatter at all: each such step serves
// two residuals at most.
bool MayScatter(std::span<const TrackPoint> window) {
  constexpr float least = LeastScatter / DeviationOfMedian;
  int steps = 0;
  for (std::size_t i = 1; i < WindowSize; ++i) {
    steps += std::abs(window[i].depth - window[i - 1].depth) > least ? 1 : 0;
  }
  return steps >= static_cast<int>(WindowSize / 2 - 1) / 2;
}

// Metres by which the soundings of a window lie off the line between their neighbours.
float ScatterOf(std::span<const TrackPoint> window) {
  std::array<float, WindowSize - 2> residuals{};
  for (std::size_t i = 1; i + 1 < WindowSize; ++i) {
    const TrackPoint &before = window[i - 1], &behind = window[i + 1];
    const double whole = behind.way - before.way;
    const double share = whole > 0 ? (window[i].way - before.way) / whole : 0.5;
    residuals[i - 1] =
        std::abs(window[i].depth - before.depth - static_cast<float>(share) * (behind.depth - before.depth));
  }
  return DeviationOfMedian * UpperMedianOf(residuals);
}

float UsualStep(std::span<const TrackPoint> window) {
  std::array<float, WindowSize - 1> steps{};
  for (std::size_t i = 0; i + 1 < WindowSize; ++i) {
    steps[i] = static_cast<float>(window[i + 1].way - window[i].way);
  }
  return UpperMedianOf(steps);
}

bool HasGap(const TrackSection& section, std::span<const TrackPoint> window) {
  for (std::size_t i = 1; i < window.size(); ++i) {
    if (IsGap(section, window[i - 1], window[i])) return true;
  }
  return false;
}

// What lies between two lost soundings that are near is lost with them.
void LoseBetween(TrackSection& section, std::span<const TrackPoint> run) {
  std::size_t last = run.size();
  for (std::size_t i = 0; i < run.size(); ++i) {
    if (section.fate[run[i].at] != Fate::Lost) continue;
    if (last < i && run[i].way - run[last].way <= MostBetween) {
      for (std::size_t k = last + 1; k < i; ++k) section.fate[run[k].at] = Fate::Lost;
    }
    last = i;
  }
}

}  // namespace

void FindScatter(TrackSection& section) {
  const std::vector<TrackPoint> points = PointsOf(section);
  if (points.size() < WindowSize) return;
  const std::span<const TrackPoint> all(points);
  const std::size_t count = (points.size() - WindowSize) / WindowStride + 1;
  const auto windowAt = [all](std::size_t w) { return all.subspan(w * WindowStride, WindowSize); };
  std::vector<std::size_t> wide;
  for (std::size_t w = 0; w < count; ++w) {
    const auto window = windowAt(w);
    if (!MayScatter(window) || HasGap(section, window)) continue;
    const float depth = window[WindowSize / 2].depth;
    const float least = std::max({LeastScatter, LeastScatterOfDepth * depth, UsualStep(window)});
    if (ScatterOf(window) > least) wide.push_back(w);
  }
  if (wide.empty()) return;
  std::vector<float> scatter(count);
  for (std::size_t w = 0; w < count; ++w) scatter[w] = ScatterOf(windowAt(w));
  std::vector<float> ordered = scatter;
  const float usual = UpperMedianOf(ordered);
  std::erase_if(wide, [&](std::size_t w) { return scatter[w] <= ScatterOfUsual * usual; });
  for (std::size_t k = 0; k < wide.size(); ++k) {
    // A window alone may scatter by chance.
    const bool isAlone =
        (k == 0 || wide[k - 1] + 1 < wide[k]) && (k + 1 == wide.size() || wide[k] + 1 < wide[k + 1]);
    if (isAlone) continue;
    for (const TrackPoint& point : windowAt(wide[k])) section.fate[point.at] = Fate::Lost;
  }
  for (std::size_t first = 0, end = 1; first < points.size(); first = end++) {
    while (end < points.size() && !IsGap(section, points[end - 1], points[end])) ++end;
    const auto run = all.subspan(first, end - first);
    LoseBetween(section, run);
    const auto lost = std::count_if(run.begin(), run.end(), [&](const TrackPoint& point) {
      return section.fate[point.at] == Fate::Lost;
    });
    const bool isBesideGap = first > 0 || end < points.size();
    if (static_cast<float>(lost) <
        (isBesideGap ? MostLostBesideGap : MostLost) * static_cast<float>(run.size()))
      continue;
    for (const TrackPoint& point : run) section.fate[point.at] = Fate::Lost;
  }
}

}  // namespace sondrix
