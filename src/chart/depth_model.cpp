#include "chart/depth_model.h"

#include "chart/bands.h"
#include "chart/cross_validation.h"
#include "chart/distance_field.h"
#include "chart/model_choice.h"
#include "chart/shore_mask.h"
#include "chart/spline_surface.h"
#include "chart/surroundings.h"
#include "chart/thinning.h"
#include "chart/track_lines.h"
#include "chart/uncertainty.h"
#include "core/files.h"
#include "core/parallel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>

namespace sondrix {
namespace {

// A tenth of a line spacing shows what the lines know, and the surface between two cells is all but straight.
constexpr double CellsOfSpacing = 10;
constexpr double ReachSpacings = 1.5, ReachCells = 5;
// By default a grid has no more cells than that, and none may have more than the second: 3 GB while it is
// made.
constexpr double DefaultCells = 16e6, MostCells = 64e6;
// Cells around those of the chart that the surface needs to end freely.
constexpr float Margin = 2;
constexpr double DisagreementSpacings = 0.3;
constexpr std::size_t SurfacesAtOnce = 2;

// The next of 1, 2, 2.5 and 5 times a power of ten that isn't larger.
double RoundedDown(double value) {
  const double decade = std::pow(10, std::floor(std::log10(value)));
  for (const double step : {5.0, 2.5, 2.0, 1.0}) {
    if (value >= step * decade * (1 - 1e-9)) return step * decade;
  }
  return decade;
}

std::string ShownMetres(double metres) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%g", metres);
  return text.data();
}

ShoreLines::Box BoxOf(std::span<const PlaneSounding> soundings) {
  ShoreLines::Box box;
  for (const PlaneSounding& one : soundings) box.Add({one.x, one.y});
  return box;
}

// Corners lie at whole cells, so that charts of the same cell fit each other.
GridShape ShapeOver(const ShoreLines::Box& box, double cell, double margin) {
  GridShape shape;
  shape.cell = cell;
  shape.west = std::floor((box.west - margin) / cell) * cell;
  shape.north = std::ceil((box.north + margin) / cell) * cell;
  const double columns = std::ceil((box.east + margin - shape.west) / cell);
  const double rows = std::ceil((shape.north - box.south + margin) / cell);
  if (columns * rows > MostCells) {
    const double fits = cell * std::sqrt(columns * rows / MostCells) * 1.01;
    const double decade = std::pow(10, std::floor(std::log10(fits)) - 1);
    throw CantModel("a grid of " + ShownMetres(cell) + " m cells would have " + ShownMetres(columns) + " x " +
                    ShownMetres(rows) + " of them; --cell " + ShownMetres(std::ceil(fits / decade) * decade) +
                    " fits");
  }
  shape.columns = static_cast<int>(columns), shape.rows = static_cast<int>(rows);
  return shape;
}

// What a single sounding scatters by, metres: from the second differences along the lines (Gasser, Sroka and
// Jennen-Steinmetz, 1986, Biometrika 73, 625-633), by their median, which a rough place doesn't move.
double ScatterOf(std::span<const PlaneSounding> soundings, const TrackLines& lines) {
  constexpr std::size_t enough = 200'000;
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / enough);
  std::vector<double> bends;
  for (std::size_t i = 2; i < soundings.size(); i += stride) {
    if (lines.lineOf[i] != lines.lineOf[i - 2]) continue;
    bends.push_back(std::abs(
        static_cast<double>(soundings[i - 2].depth - 2 * soundings[i - 1].depth + soundings[i].depth)));
  }
  if (bends.empty()) return 0;
  const auto middle = bends.begin() + static_cast<std::ptrdiff_t>(bends.size() / 2);
  std::nth_element(bends.begin(), middle, bends.end());
  return 1.4826 * *middle / std::sqrt(6.0);
}

double SpreadOf(std::span<const PlaneSounding> soundings) {
  double sum = 0, squares = 0;
  const auto count = static_cast<double>(soundings.size());
  for (const PlaneSounding& one : soundings) sum += static_cast<double>(one.depth);
  for (const PlaneSounding& one : soundings)
    squares += std::pow(static_cast<double>(one.depth) - sum / count, 2);
  return std::sqrt(squares / count);
}

std::size_t NodeOf(const GridShape& shape, const GridPoint& at) {
  return shape.IndexOf(std::clamp(static_cast<int>(std::floor(at.x + 0.5F)), 0, shape.columns - 1),
                       std::clamp(static_cast<int>(std::floor(at.y + 0.5F)), 0, shape.rows - 1));
}

}  // namespace

MadeModel MakeDepthModel(std::vector<PlaneSounding> soundings, const ModelOptions& options) {
  if (soundings.empty()) throw CantModel("no sounding is used");
  const auto endIfAsked = [&] {
    if (options.isToEnd && options.isToEnd()) throw EndAsked();
  };
  MadeModel made;
  ModelAccount& account = made.account;
  account.soundings = soundings.size();
  TrackLines lines = CutLines(soundings);
  account.lines = lines.count;
  account.lineSpacing = LineSpacing(soundings, lines);
  const double spacing =
      account.lineSpacing > 0 ? account.lineSpacing : options.cell.value_or(1) * CellsOfSpacing;
  endIfAsked();

  ShoreLines::Box box = BoxOf(soundings);
  std::unique_ptr<ShoreLines> shore;
  if (options.shore != nullptr) {
    shore = std::make_unique<ShoreLines>(*options.shore, soundings);
    if (const ShoreLines::Box& water = shore->Water(); !water.isEmpty && !options.reach) {
      box.Add({water.west, water.south});
      box.Add({water.east, water.north});
    }
  }
  if (options.cell) {
    account.cell = *options.cell;
  } else {
    const double side = 2 * ReachSpacings * spacing;
    const double area = (box.east - box.west + side) * (box.north - box.south + side);
    account.cell = RoundedDown(spacing / CellsOfSpacing);
    // Rounding takes at most three fifths away.
    if (area > DefaultCells * account.cell * account.cell)
      account.cell = RoundedDown(2.5 * std::sqrt(area / DefaultCells));
  }
  account.reach = options.reach.value_or(std::max(ReachSpacings * spacing, ReachCells * account.cell));
  GridShape& shape = made.model.shape;
  shape = ShapeOver(box, account.cell, account.reach + account.cell);

  // What was chosen by leaving lines out, and how far that is to be trusted.
  std::vector<LeftOut> leftOut;
  const auto begin = [&options](std::string_view step) {
    if (options.begin) options.begin(step);
  };
  if (lines.count > 1 || soundings.size() > 50) {
    begin("predicting lines left out");
    leftOut = LeaveLinesOut(soundings, lines, spacing, MembersToTry(options.tension), account.reach,
                            options.threads, options.isToEnd);
  }
  const Mixture mixture = ChooseMixture(leftOut, options.method, options.tension);
  account.method = mixture.method;
  account.members = mixture.members;
  account.leftOut = static_cast<std::size_t>(
      std::count_if(leftOut.begin(), leftOut.end(), [](const LeftOut& one) { return !one.isAway; }));
  account.leftOutError = ErrorOf(leftOut, mixture.weights);
  const UncertaintyRule rule(leftOut, mixture.weights, spacing, ScatterOf(soundings, lines),
                             SpreadOf(soundings));
  leftOut = {};
  lines = {};

  // The points that the surface is drawn to, and the cells that it is drawn for.
  std::vector<GridPoint> points;
  {
    const std::vector<ThinnedPoint> thinned = ThinSoundings(soundings, {}, shape);
    points.reserve(thinned.size());
    for (const ThinnedPoint& one : thinned) points.push_back(one.at);
    account.thinned = points.size();
  }
  const auto [shallowest, deepest] =
      std::minmax_element(soundings.begin(), soundings.end(),
                          [](const PlaneSounding& a, const PlaneSounding& b) { return a.depth < b.depth; });
  float least = shallowest->depth;
  const float most = deepest->depth;
  soundings = {};
  std::vector<std::uint8_t> marked(shape.CellCount());
  for (const GridPoint& point : points) marked[NodeOf(shape, point)] = 1;
  std::vector<std::uint8_t> water;
  if (shore != nullptr) {
    water = shore->WaterCells(shape, marked);
    bool isAnyWater = false;
    for (std::size_t k = 0; k < water.size(); ++k) isAnyWater |= water[k] != 0 && marked[k] != 0;
    if (!isAnyWater) throw CantModel("no sounding lies in the water of the shore");
    for (const PlanePoint& at : shore->Places(shape, shape.cell / 2)) {
      const GridPoint point = {static_cast<float>((at.x - shape.west) / shape.cell - 0.5),
                               static_cast<float>((shape.north - at.y) / shape.cell - 0.5), 0.0F, 1.0F};
      points.push_back(point);
      marked[NodeOf(shape, point)] = 1;
    }
    least = std::min(least, 0.0F);
  }
  std::vector<float> distance = DistanceField(shape.columns, shape.rows, marked, options.threads);
  const std::vector<float> offMiddle =
      OffMiddle(shape.columns, shape.rows, marked,
                std::max(1, static_cast<int>(SurroundingSpacings * spacing / shape.cell)), options.threads);
  marked = {};
  const auto reachNodes = static_cast<float>(account.reach / shape.cell);
  const bool isBounded = shore != nullptr && shore->Encloses() && !options.reach;
  std::vector<float> domain(distance.size());
  for (std::size_t k = 0; k < domain.size(); ++k) {
    domain[k] = isBounded || distance[k] <= reachNodes + Margin ? 1.0F : 0.0F;
  }

  std::vector<float>& depth = made.model.depth;
  depth.assign(shape.CellCount(), 0.0F);
  std::vector<float> disagreement(shape.CellCount(), 0.0F);
  // As many surfaces at a time as memory allows: each by itself needs no thread to wait for others.
  const std::size_t count = mixture.surfaces.size();
  for (std::size_t first = 0; first < count; first += SurfacesAtOnce) {
    const std::size_t together = std::min(SurfacesAtOnce, count - first);
    begin("drawing surfaces " + std::to_string(first + 1) + " to " + std::to_string(first + together) +
          " of " + std::to_string(count));
    std::array<std::vector<float>, SurfacesAtOnce> surfaces;
    const int threadsOfEach = std::max(1, options.threads / static_cast<int>(together));
    const auto draw = [&](std::size_t at) {
      surfaces[at] = SplineSurface(shape.columns, shape.rows, domain, points,
                                   ShapeOf(mixture.surfaces[first + at].member, spacing, shape.cell),
                                   threadsOfEach, options.isToEnd);
    };
    InParallel(together, options.threads, [&] { return draw; });
    for (std::size_t i = 0; i < together; ++i) {
      const auto weight = static_cast<float>(mixture.surfaces[first + i].weight);
      const auto sign = static_cast<float>(mixture.surfaces[first + i].disagrees);
      for (std::size_t k = 0; k < depth.size(); ++k) {
        depth[k] += weight * surfaces[i][k];
        disagreement[k] += sign * surfaces[i][k];
      }
    }
  }
  domain = {};
  endIfAsked();
  // Where the surfaces cross they agree by chance: what counts is by how much they differ around.
  for (float& one : disagreement) one *= one;
  MeanAround(shape.columns, shape.rows, disagreement,
             std::max(1, static_cast<int>(DisagreementSpacings * spacing / shape.cell)), options.threads);

  // Away from soundings a bending plate goes on and on: no bed is expected a quarter of the range beyond
  // them, nor beyond them at all where nothing tells how the bed goes on.
  const float slack = std::isnan(account.leftOutError) ? 0.0F : (most - least) / 4,
              highest = least >= 0 ? std::max(0.0F, least - slack) : least - slack;
  std::vector<float>& uncertainty = made.model.uncertainty;
  uncertainty.assign(shape.CellCount(), std::numeric_limits<float>::quiet_NaN());
  InBands(shape.rows, options.threads, [&](int from, int to) {
    for (int row = from; row < to; ++row) {
      for (int column = 0; column < shape.columns; ++column) {
        const std::size_t k = shape.IndexOf(column, row);
        const bool isCharted = (isBounded || distance[k] <= reachNodes) && (water.empty() || water[k] != 0);
        if (!isCharted) {
          depth[k] = std::numeric_limits<float>::quiet_NaN();
          continue;
        }
        depth[k] = std::clamp(depth[k], highest, most + slack);
        uncertainty[k] = static_cast<float>(
            rule.At({shape.MiddleOf(column, row), static_cast<double>(distance[k]) * shape.cell,
                     static_cast<double>(offMiddle[k]) * shape.cell,
                     std::sqrt(static_cast<double>(disagreement[k]))}));
      }
    }
  });
  return made;
}

}  // namespace sondrix
