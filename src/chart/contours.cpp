#include "chart/contours.h"

#include "chart/contour_surface.h"
#include "chart/contour_trace.h"
#include "chart/depth_areas.h"
#include "core/files.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sondrix {

namespace {

struct DepthRange {
  double least = std::numeric_limits<double>::infinity(), most = -least;
};

DepthRange RangeOf(const DepthModel& model) {
  float least = std::numeric_limits<float>::infinity(), most = -least;
  for (const float depth : model.depth) {
    least = depth < least ? depth : least;
    most = depth > most ? depth : most;
  }
  return {static_cast<double>(least), static_cast<double>(most)};
}

// The first multiple is the one that the shallowest water has reached, so that the first area needn't go from
// the surface to a deep bed.
struct Multiples {
  double first = 1, last = 0;
  double Count() const { return last - first + 1; }
};

Multiples MultiplesOf(double step, const DepthRange& range) {
  return {std::max(1.0, std::floor(range.least / step)), std::floor(range.most / step)};
}

// 1, 2 or 5 times a power of ten of the unit, metres.
double RoundStep(const DepthRange& range, double unit) {
  constexpr double wanted = 10;
  const double exact = (range.most - std::max(range.least, 0.0)) / unit / wanted;
  if (!(exact > 0)) return unit;
  const double decade = std::pow(10, std::floor(std::log10(exact)));
  // The limits are the geometric means of neighbours.
  const double part = exact / decade;
  if (part < std::sqrt(2.0)) return decade * unit;
  if (part < std::sqrt(10.0)) return 2 * decade * unit;
  return (part < std::sqrt(50.0) ? 5 : 10) * decade * unit;
}

// To a nanometre, so that 3 times 0.1 is 0.3.
double Multiple(double number, double step) {
  constexpr double parts = 1e9;
  return std::round(number * step * parts) / parts;
}

// Each fifth multiple of a step, or each fifth of a list.
std::vector<bool> IndexDepths(std::span<const double> depths) {
  constexpr std::size_t fifth = 5;
  const double step = depths.size() > 1 ? depths[1] - depths[0] : 0;
  const auto isMultiple = [step](double depth) {
    return std::abs(depth - std::round(depth / step) * step) < 1e-6;
  };
  bool isStep = step > 0;
  for (std::size_t i = 1; isStep && i < depths.size(); ++i) {
    isStep = std::abs(depths[i] - depths[i - 1] - step) < 1e-6 && isMultiple(depths[i]);
  }
  std::vector<bool> result(depths.size());
  for (std::size_t i = 0; i < depths.size(); ++i) {
    result[i] = isStep ? std::fmod(std::round(depths[i] / step), fifth) == 0 : (i + 1) % fifth == 0;
  }
  return result;
}

std::vector<ContourLine> LinesOf(const ContourTrace& trace, std::span<const ContourPath> paths,
                                 std::span<const double> depths) {
  const std::vector<bool> isIndex = IndexDepths(depths);
  std::vector<ContourLine> lines;
  lines.reserve(paths.size());
  for (const ContourPath& path : paths) {
    const std::size_t depth = path.level - 1U;
    ContourLine line = {depths[depth], isIndex[depth], path.isClosed, {}};
    line.points.reserve(path.count + 1);
    std::int32_t vertex = path.first;
    for (std::size_t i = 0; i < path.count; ++i, vertex = trace.next[static_cast<std::size_t>(vertex)]) {
      line.points.push_back(trace.at[static_cast<std::size_t>(vertex)]);
    }
    if (path.isClosed) line.points.push_back(line.points.front());
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace

std::vector<double> DepthsToDraw(const ContourDepths& wanted, const DepthModel& model) {
  std::vector<double> depths = wanted.list;
  if (!depths.empty()) {
    if (depths.size() > MostContourDepths) depths.resize(MostContourDepths);
    return depths;
  }
  const DepthRange range = RangeOf(model);
  if (!(range.most > 0)) return depths;
  double step = wanted.step > 0 ? wanted.step : RoundStep(range, wanted.unit);
  while (MultiplesOf(step, range).Count() > static_cast<double>(MostContourDepths)) step *= 2;
  const Multiples multiples = MultiplesOf(step, range);
  for (double number = multiples.first; number <= multiples.last; ++number) {
    depths.push_back(Multiple(number, step));
  }
  return depths;
}

bool IsStepTooFine(double step, const DepthModel& model) {
  return step > 0 && MultiplesOf(step, RangeOf(model)).Count() > static_cast<double>(MostContourDepths);
}

Contours ContoursOf(const DepthModel& model, std::span<const double> depths,
                    const std::function<bool()>& isToEnd) {
  const auto askEnd = [&isToEnd] {
    if (isToEnd && isToEnd()) throw EndAsked();
  };
  askEnd();
  ContourSurface surface = ContourSurfaceOf(model, depths);
  askEnd();
  const ContourTrace trace = TraceContours(surface);
  surface.depth = {};
  const std::vector<ContourPath> paths = PathsOf(trace);
  askEnd();
  Contours result;
  result.areas = DepthAreasOf(surface, trace, paths, RangeOf(model).most);
  askEnd();
  result.lines = LinesOf(trace, paths, depths);
  return result;
}

}  // namespace sondrix
