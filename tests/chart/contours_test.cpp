#include "chart/contours.h"

#include "chart/contour_surface.h"
#include "chart/made_models.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <tuple>

namespace sondrix {
namespace {

const std::vector<double> HalfMetres = [] {
  std::vector<double> depths;
  for (int i = 1; i < 60; ++i) depths.push_back(i * 0.5);
  return depths;
}();

const RoughBed Beds[] = {
    {1, 20, 20, 0.0, 0.0, 0},  {2, 25, 17, 0.05, 0.02, 0},  {3, 17, 25, 0.5, 0.1, 0},
    {4, 20, 20, 0.2, 0.3, 15}, {5, 20, 20, 2.0, 0.05, 3},   {6, 20, 20, 0.05, 0.5, 0},
    {7, 2, 20, 0.3, 0, 0},     {8, 20, 20, 0.02, 0.05, 20},
};

// As a file with steps of a millimetre has them.
struct Place {
  long long x = 0, y = 0;
  bool operator==(const Place&) const = default;
};
struct Piece {
  Place a, b;
};

std::vector<Piece> PiecesOf(const std::vector<ContourLine>& lines) {
  const auto placeOf = [](PlanePoint point) {
    return Place{std::llround(point.x * 1000), std::llround(point.y * 1000)};
  };
  std::vector<Piece> pieces;
  for (const ContourLine& line : lines) {
    for (std::size_t i = 1; i < line.points.size(); ++i) {
      pieces.push_back({placeOf(line.points[i - 1]), placeOf(line.points[i])});
    }
  }
  return pieces;
}

int SideOf(const Piece& piece, const Place& p) {
  const long long side =
      (piece.b.x - piece.a.x) * (p.y - piece.a.y) - (piece.b.y - piece.a.y) * (p.x - piece.a.x);
  return side > 0 ? 1 : side < 0 ? -1 : 0;
}

// Pairs of pieces that cross or touch, but for those that follow each other; and pieces without length.
int Contacts(const std::vector<Piece>& pieces) {
  int contacts = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const Piece& p = pieces[i];
    if (p.a == p.b) ++contacts;
    for (std::size_t j = i + 1; j < pieces.size(); ++j) {
      const Piece& q = pieces[j];
      const bool areApart = std::max(p.a.x, p.b.x) < std::min(q.a.x, q.b.x) ||
                            std::max(q.a.x, q.b.x) < std::min(p.a.x, p.b.x) ||
                            std::max(p.a.y, p.b.y) < std::min(q.a.y, q.b.y) ||
                            std::max(q.a.y, q.b.y) < std::min(p.a.y, p.b.y);
      const bool isOnBothSides = SideOf(p, q.a) * SideOf(p, q.b) <= 0 && SideOf(q, p.a) * SideOf(q, p.b) <= 0;
      if (!areApart && isOnBothSides && !(p.b == q.a) && !(q.b == p.a)) ++contacts;
    }
  }
  return contacts;
}

double AreaWithin(const PlaneLine& ring) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    sum += (ring[i].x - ring[0].x) * (ring[i + 1].y - ring[0].y) -
           (ring[i + 1].x - ring[0].x) * (ring[i].y - ring[0].y);
  }
  return sum / 2;
}

bool IsWithin(const PlaneLine& ring, PlanePoint p) {
  bool isWithin = false;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const PlanePoint &a = ring[i], &b = ring[i + 1];
    if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
      isWithin = !isWithin;
  }
  return isWithin;
}

// Not a number where a corner that counts is missing.
double Bilinear(const DepthModel& model, PlanePoint p) {
  const GridShape& shape = model.shape;
  const double x = (p.x - shape.west) / shape.cell - 0.5, y = (shape.north - p.y) / shape.cell - 0.5;
  const int column = std::clamp(static_cast<int>(x), 0, shape.columns - 2);
  const int row = std::clamp(static_cast<int>(y), 0, shape.rows - 2);
  const double u = x - column, v = y - row;
  double depth = 0;
  for (const auto& [c, r, weight] : {std::tuple(0, 0, (1 - u) * (1 - v)), std::tuple(1, 0, u * (1 - v)),
                                     std::tuple(0, 1, (1 - u) * v), std::tuple(1, 1, u * v)}) {
    if (std::abs(weight) < 1e-9) continue;
    depth += weight * static_cast<double>(model.depth[shape.IndexOf(column + c, row + r)]);
  }
  return depth;
}

class OnBeds : public testing::TestWithParam<RoughBed> {
 protected:
  DepthModel model_ = ModelOf(GetParam());
  Contours contours_ = ContoursOf(model_, HalfMetres, nullptr);
};

TEST_P(OnBeds, NoLineTouchesAnother) {
  ASSERT_FALSE(contours_.lines.empty());
  EXPECT_EQ(Contacts(PiecesOf(contours_.lines)), 0);
  for (const ContourLine& line : contours_.lines) {
    const PlanePoint &first = line.points.front(), &last = line.points.back();
    EXPECT_EQ(line.isClosed, first.x == last.x && first.y == last.y);
  }
}

TEST_P(OnBeds, TheModelIsNowhereShallowerAlongALine) {
  constexpr int parts = 8;
  for (const ContourLine& line : contours_.lines) {
    for (std::size_t i = 0; i + 1 < line.points.size(); ++i) {
      const PlanePoint &a = line.points[i], &b = line.points[i + 1];
      for (int part = 0; part <= parts; ++part) {
        const double t = static_cast<double>(part) / parts;
        ASSERT_GE(Bilinear(model_, {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)}), line.depth - 1e-6);
      }
    }
  }
}

TEST_P(OnBeds, AreasCoverTheChartAndEachNodeLiesInItsOwn) {
  const ContourSurface surface = ContourSurfaceOf(model_, HalfMetres);
  const GridShape& shape = model_.shape;
  double covered = 0;
  for (const DepthArea& area : contours_.areas) {
    for (const PlaneLine& ring : area.rings) {
      EXPECT_EQ(AreaWithin(ring) > 0, &ring == &area.rings[0]);
      covered += AreaWithin(ring);
    }
  }
  const double squares = std::accumulate(surface.squares.begin(), surface.squares.end(), 0.0);
  EXPECT_NEAR(covered, squares * shape.cell * shape.cell, 1e-4);

  int beyond = 0, inside = 0;
  for (int node = 0; node < shape.columns * shape.rows; ++node) {
    const int column = node % shape.columns, row = node / shape.columns;
    if (!surface.IsInside(column, row)) continue;
    ++inside;
    const auto isWithin = [&](const PlaneLine& ring) { return IsWithin(ring, shape.MiddleOf(column, row)); };
    const auto isAround = [&](const DepthArea& area) {
      return std::count_if(area.rings.begin(), area.rings.end(), isWithin) == 1;
    };
    const auto area = std::find_if(contours_.areas.begin(), contours_.areas.end(), isAround);
    ASSERT_NE(area, contours_.areas.end());
    EXPECT_EQ(std::count_if(contours_.areas.begin(), contours_.areas.end(), isAround), 1);
    const auto index = static_cast<std::size_t>(node);
    EXPECT_GE(static_cast<double>(model_.depth[index]), area->depthMin);
    if (model_.depth[index] > static_cast<float>(area->depthMax) + 2 * model_.uncertainty[index]) ++beyond;
  }
  // Hollows of up to two dozen cells may go in all.
  EXPECT_LE(beyond, std::min(24, inside / 10));
}

INSTANTIATE_TEST_SUITE_P(Contours, OnBeds, testing::ValuesIn(Beds));

TEST(Contours, SmallShoalsStayAndSmallHollowsGo) {
  const struct {
    double rise;  // metres above the bed of 4.2 m
    int size;     // cells along each side
    std::size_t rings;
    double leastArea, mostArea;  // of the outer ring, cells
  } cases[] = {
      {0.21, 1, 1, 0.3, 2},  // hardly above the contour of 4 m
      {3, 1, 3, 0.5, 4},    {-3, 1, 0, 0, 0}, {-3, 3, 0, 0, 0}, {-3, 7, 2, 40, 60},
  };
  for (const auto& [rise, size, rings, leastArea, mostArea] : cases) {
    DepthModel model = {{0, 15, 1, 15, 15}, std::vector<float>(225, 4.2F), std::vector<float>(225, 0.1F)};
    for (int row = 4; row < 4 + size; ++row) {
      for (int column = 4; column < 4 + size; ++column) {
        model.depth[model.shape.IndexOf(column, row)] = static_cast<float>(4.2 - rise);
      }
    }
    const std::vector<double> depths = {2, 3, 4, 5, 6.5};
    const Contours contours = ContoursOf(model, depths, nullptr);
    ASSERT_EQ(contours.lines.size(), rings) << rise << " " << size;
    if (rings == 0) continue;
    const double area = std::abs(AreaWithin(contours.lines[rise > 0 ? rings - 1 : 0].points));
    EXPECT_GT(area, leastArea) << rise << " " << size;
    EXPECT_LT(area, mostArea) << rise << " " << size;
  }
}

TEST(Contours, AShoreOfDepthZero) {
  DepthModel model = {{0, 2, 1, 4, 2}, {-1, 1, 2, 3, -1, 1, 2, 3}, std::vector<float>(8, 0.1F)};
  const std::vector<double> depths = {0, 2.5};
  const Contours contours = ContoursOf(model, depths, nullptr);
  ASSERT_EQ(contours.areas.size(), 2U);
  EXPECT_EQ(contours.areas[0].depthMin, 0);
  EXPECT_EQ(contours.areas[1].depthMax, 3);
  EXPECT_NEAR(AreaWithin(contours.areas[0].rings[0]) + AreaWithin(contours.areas[1].rings[0]), 2.5, 0.05);
}

TEST(Contours, DepthsToDraw) {
  const struct {
    double step;
    std::vector<double> list;
    float least, most;
    std::vector<double> depths;
  } cases[] = {
      {0, {}, 0.2F, 12, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
      {0, {}, 0.2F, 2.1F, {0.2, 0.4, 0.6, 0.8, 1, 1.2, 1.4, 1.6, 1.8, 2}},
      {0, {}, 4321, 4398, {4320, 4330, 4340, 4350, 4360, 4370, 4380, 4390}},
      {0.3, {}, 0, 1, {0.3, 0.6, 0.9}},
      {0.3, {0, 1, 7}, 0, 2, {0, 1, 7}},
      {0, {}, 3, 3, {3}},
      {0, {}, -2, -1, {}},
  };
  for (const auto& [step, list, least, most, depths] : cases) {
    const DepthModel model = {{0, 0, 1, 2, 1}, {least, most}, {0, 0}};
    EXPECT_EQ(DepthsToDraw({step, list}, model), depths) << most;
  }
  const DepthModel deep = {{0, 0, 1, 2, 1}, {0, 9000}, {0, 0}};
  EXPECT_TRUE(IsStepTooFine(1, deep));
  EXPECT_FALSE(IsStepTooFine(5, deep));
  EXPECT_EQ(DepthsToDraw({1, {}}, deep).size(), 1125U);
}

TEST(Contours, EachFifthIsAnIndex) {
  const DepthModel model = {{0, 2, 1, 2, 2}, {0, 30, 0, 30}, std::vector<float>(4, 0.1F)};
  const std::tuple<std::vector<double>, std::vector<double>> cases[] = {
      {{2, 4, 6, 8, 10, 12}, {10}}, {{4, 5, 6, 7, 8, 9, 10, 11}, {5, 10}}, {{1, 2, 3, 5, 10, 20}, {10}}};
  for (const auto& [depths, indices] : cases) {
    std::vector<double> found;
    for (const ContourLine& line : ContoursOf(model, depths, nullptr).lines) {
      if (line.isIndex) found.push_back(line.depth);
    }
    EXPECT_EQ(found, indices);
  }
}

}  // namespace
}  // namespace sondrix
