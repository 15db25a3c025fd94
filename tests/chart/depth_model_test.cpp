#include "chart/depth_model.h"

#include "chart/distance_field.h"
#include "chart/track_lines.h"
#include "core/files.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

namespace sondrix {
namespace {

using Bed = std::function<double(double x, double y)>;
using Soundings = std::vector<PlaneSounding>;

double Flat(double, double) { return 5; }
double Slope(double x, double y) { return 4 + 0.02 * x + 0.01 * y; }
double Hills(double x, double y) { return 8 + 3 * std::sin(x / 40) * std::cos(y / 55) + 0.01 * x; }

// To and fro along lines that run to the north, a sounding each two metres, and along the edge to the next
// line.
Soundings Lawn(const Bed& bed, int lines, double spacing, double length, double turned = 0) {
  Soundings soundings;
  const double c = std::cos(turned), s = std::sin(turned);
  const auto add = [&](double x, double y) {
    soundings.push_back(
        {c * x - s * y, s * x + c * y, static_cast<float>(bed(c * x - s * y, s * x + c * y))});
  };
  for (int line = 0; line < lines; ++line) {
    for (double way = 0; way <= length; way += 2) add(line * spacing, line % 2 == 0 ? way : length - way);
    if (line + 1 == lines) break;
    for (double way = 2; way < spacing; way += 2) add(line * spacing + way, line % 2 == 0 ? length : 0);
  }
  return soundings;
}

DepthModel ModelOf(const Soundings& soundings, const ModelOptions& options = {}) {
  return MakeDepthModel(soundings, options).model;
}

std::size_t ChartedCells(const DepthModel& model) {
  return static_cast<std::size_t>(
      std::count_if(model.depth.begin(), model.depth.end(), [](float depth) { return !std::isnan(depth); }));
}

// Of the cell in which a place lies.
float DepthAt(const DepthModel& model, double x, double y) {
  const GridShape& shape = model.shape;
  const int column = static_cast<int>(std::floor((x - shape.west) / shape.cell));
  const int row = static_cast<int>(std::floor((shape.north - y) / shape.cell));
  if (column < 0 || row < 0 || column >= shape.columns || row >= shape.rows) return std::nanf("");
  return model.depth[shape.IndexOf(column, row)];
}

struct Misfit {
  double error = 0, within = 0;  // root mean square; share of the cells within twice the uncertainty
};
Misfit MisfitOf(const DepthModel& model, const Bed& bed) {
  double squares = 0, within = 0, count = 0;
  for (int row = 0; row < model.shape.rows; ++row) {
    for (int column = 0; column < model.shape.columns; ++column) {
      const std::size_t k = model.shape.IndexOf(column, row);
      if (std::isnan(model.depth[k])) continue;
      const PlanePoint at = model.shape.MiddleOf(column, row);
      const double error = static_cast<double>(model.depth[k]) - bed(at.x, at.y);
      squares += error * error, count += 1;
      within += std::abs(error) <= 2 * static_cast<double>(model.uncertainty[k]) ? 1 : 0;
    }
  }
  return {std::sqrt(squares / count), within / count};
}

TEST(DepthModel, IsTheBedWhereLinesTellIt) {
  // Of a plane nothing is hidden, not even beyond the last line; hills hide between two lines. The chart ends
  // half a line spacing beyond them.
  const std::tuple<const char*, Bed, double> rows[] = {
      {"flat", Flat, 0.001}, {"slope", Slope, 0.02}, {"hills", Hills, 0.15}};
  for (const auto& [name, bed, most] : rows) {
    ModelOptions options;
    options.reach = 10;
    const Misfit misfit = MisfitOf(ModelOf(Lawn(bed, 12, 20, 220, 0.4), options), bed);
    EXPECT_LT(misfit.error, most) << name;
    EXPECT_GT(misfit.within, 0.8) << name;
  }
}

TEST(DepthModel, HoldsTheSameBytesForAnyThreads) {
  const Soundings lawn = Lawn(Hills, 8, 15, 150, 1.1);
  ModelOptions options;
  const DepthModel alone = ModelOf(lawn, options);
  options.threads = 3;
  const DepthModel three = ModelOf(lawn, options);
  EXPECT_GT(ChartedCells(alone), 5000u);
  const auto isSame = [](const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
  };
  EXPECT_TRUE(isSame(alone.depth, three.depth));
  EXPECT_TRUE(isSame(alone.uncertainty, three.uncertainty));
}

TEST(DepthModel, ALongStayCountsNoMoreThanAPass) {
  Soundings lawn = Lawn(Slope, 6, 10, 100);
  const float before = DepthAt(ModelOf(lawn), 25, 50);
  for (int i = 0; i < 5000; ++i) lawn.push_back({20 + 0.001 * (i % 7), 50, i % 50 == 0 ? 9.0F : 4.9F});
  EXPECT_NEAR(DepthAt(ModelOf(lawn), 25, 50), before, 0.05F);
  EXPECT_NEAR(DepthAt(ModelOf(lawn), 20, 50), 4.9F, 0.02F);
}

TEST(DepthModel, APlateGoesOnWithTheSlopeAndASkinDoesNot) {
  const Bed steep = [](double x, double) { return 20 + 0.2 * x; };
  const auto beyond = [&](double tension) {
    ModelOptions options;
    options.tension = tension, options.reach = 30;
    return DepthAt(ModelOf(Lawn(steep, 10, 10, 100), options), -25, 50);
  };
  EXPECT_NEAR(beyond(0), 15, 0.5);
  EXPECT_NEAR(beyond(1), 20, 0.5);
}

TEST(DepthModel, EndsAtItsReachAndLeavesHoles) {
  Soundings ring;
  for (int i = 0; i < 720; ++i) {
    const double angle = i * std::numbers::pi / 360;
    ring.push_back({200 * std::cos(angle), 200 * std::sin(angle), 6});
  }
  ModelOptions options;
  options.reach = 30, options.cell = 2;
  const DepthModel model = ModelOf(ring, options);
  for (const double way : {172.0, 200.0, 228.0}) EXPECT_NEAR(DepthAt(model, 0, way), 6, 0.1) << way;
  for (const double way : {0.0, 166.0, 234.0}) EXPECT_TRUE(std::isnan(DepthAt(model, 0, way))) << way;
}

TEST(DepthModel, FewSoundingsMakeASmallChart) {
  Soundings line;
  for (int i = 0; i < 200; ++i) line.push_back({i * 2.0, 0, 3});
  const std::pair<const char*, Soundings> rows[] = {{"one", {{100, 100, 3}}},
                                                    {"two", {{100, 100, 3}, {104, 100, 3}}},
                                                    {"one place", Soundings(500, {100, 100, 3})},
                                                    {"one line", line}};
  for (const auto& [name, soundings] : rows) {
    const DepthModel model = ModelOf(soundings);
    EXPECT_GE(model.shape.cell, 0.05) << name;
    EXPECT_NEAR(DepthAt(model, soundings[0].x, soundings[0].y), 3, 0.01) << name;
    for (std::size_t k = 0; k < model.depth.size(); ++k) {
      EXPECT_EQ(std::isnan(model.depth[k]), std::isnan(model.uncertainty[k])) << name;
      if (!std::isnan(model.depth[k])) {
        EXPECT_NEAR(model.depth[k], 3, 0.5) << name;
        EXPECT_TRUE(std::isfinite(model.uncertainty[k]) && model.uncertainty[k] > 0) << name;
      }
    }
  }
  EXPECT_THROW(ModelOf({}), CantModel);
}

TEST(DepthModel, RefusesAGridTooLargeWithACellThatFits) {
  const Soundings far = {{0, 0, 3}, {50'000, 40'000, 3}};
  ModelOptions options;
  options.cell = 0.1, options.reach = 10;
  try {
    ModelOf(far, options);
    FAIL();
  } catch (const CantModel& reason) {
    const std::string words = reason.what(), option = "--cell ";
    EXPECT_NE(words.find("500202 x 400202"), std::string::npos) << words;
    const double fits = std::stod(words.substr(words.find(option) + option.size()));
    EXPECT_LT(50'020.0 * 40'020 / (fits * fits), 64e6);
    EXPECT_GT(50'020.0 * 40'020 / (fits * fits), 50e6);
  }
}

TEST(DepthModel, EndsWhenAsked) {
  ModelOptions options;
  options.isToEnd = [] { return true; };
  EXPECT_THROW(ModelOf(Lawn(Flat, 4, 10, 50), options), EndAsked);
}

PlaneLine Rectangle(double west, double south, double east, double north) {
  return {{west, south}, {east, south}, {east, north}, {west, north}, {west, south}};
}

TEST(DepthModel, KeepsToTheShore) {
  // A basin from 0 to 200 each way with an island in its middle; the lines leave out both.
  const Bed basin = [](double x, double y) {
    return std::min({x, 200 - x, y, 200 - y, std::max(std::abs(x - 100), std::abs(y - 100)) - 15}) / 10;
  };
  Soundings lawn;
  for (const PlaneSounding& one : Lawn(basin, 12, 16, 176)) {
    const PlaneSounding moved = {one.x + 12, one.y + 12, static_cast<float>(basin(one.x + 12, one.y + 12))};
    if (moved.depth > 0.2F) lawn.push_back(moved);
  }
  const PlaneLine outer = Rectangle(0, 0, 200, 200), island = Rectangle(85, 85, 115, 115);
  const std::pair<const char*, Shore> rows[] = {
      {"a lake with a hole", {{{outer, island}}, {}}},
      {"closed lines", {{}, {outer, island}}},
      {"land around it", {{{Rectangle(-500, -500, 700, 700), outer}, {island}}, {}}},
      {"lines that only together close it",
       {{{island}}, {{outer[0], outer[1], outer[2]}, {outer[2], outer[3], outer[4]}}}}};
  for (const auto& [name, shore] : rows) {
    ModelOptions options;
    options.shore = &shore;
    const DepthModel model = ModelOf(lawn, options);
    const double outside[][2] = {{-4, 100}, {204, 100}, {100, 207}, {100, 100}, {90, 110}};
    for (const auto& [x, y] : outside) EXPECT_TRUE(std::isnan(DepthAt(model, x, y))) << name << x << " " << y;
    const double shallow[][2] = {{2, 50}, {198, 150}, {60, 198}, {100, 82}, {118, 100}};
    for (const auto& [x, y] : shallow)
      EXPECT_NEAR(DepthAt(model, x, y), basin(x, y), 0.35) << name << x << " " << y;
    EXPECT_NEAR(DepthAt(model, 50, 100), basin(50, 100), 0.3) << name;
  }
  const Shore elsewhere = {{{Rectangle(9000, 9000, 9100, 9100)}, {}}, {}}, nothing;
  ModelOptions options;
  options.shore = &nothing;
  EXPECT_THROW(ModelOf(lawn, options), CantModel);
  options.shore = &elsewhere;
  EXPECT_THROW(ModelOf(lawn, options), CantModel);
}

TEST(TrackLines, AreCutAndLieSoFarApart) {
  Soundings twice = Lawn(Flat, 10, 25, 200), crossed = Lawn(Flat, 8, 30, 210),
            again = Lawn(Flat, 10, 25.5, 200);
  for (PlaneSounding& one : again) one.x += 1;
  twice.insert(twice.end(), again.begin(), again.end());
  for (const PlaneSounding& one : Lawn(Flat, 8, 30, 210)) crossed.push_back({one.y, one.x, one.depth});
  const std::tuple<const char*, Soundings, double, std::uint32_t> rows[] = {
      {"lawn", Lawn(Flat, 10, 25, 200, 0.3), 25, 10},
      {"narrow", Lawn(Flat, 30, 8, 200, 2), 8, 30},
      {"run twice", twice, 25, 20},
      {"crossed", crossed, 30, 16}};
  for (const auto& [name, soundings, spacing, fewest] : rows) {
    const TrackLines lines = CutLines(soundings);
    EXPECT_NEAR(LineSpacing(soundings, lines), spacing, 0.12 * spacing) << name;
    EXPECT_GE(lines.count, fewest) << name;
    EXPECT_LE(lines.count, 3 * fewest) << name;  // the ways from line to line may be lines
  }
}

TEST(DistanceField, IsThatOfTheNearest) {
  constexpr int columns = 37, rows = 23;
  std::vector<std::uint8_t> marked(columns * rows);
  for (std::size_t k = 5; k < marked.size(); k = k * 7 / 4 + 11) marked[k] = 1;
  const std::vector<float> field = DistanceField(columns, rows, marked, 2);
  for (int at = 0; at < columns * rows; ++at) {
    double nearest = 1e9;
    for (int other = 0; other < columns * rows; ++other) {
      if (marked[static_cast<std::size_t>(other)] == 0) continue;
      nearest = std::min(nearest, std::hypot(at % columns - other % columns, at / columns - other / columns));
    }
    ASSERT_NEAR(field[static_cast<std::size_t>(at)], nearest, 1e-4);
  }
}

}  // namespace
}  // namespace sondrix
