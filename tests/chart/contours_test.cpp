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

const MadeBed Beds[] = {
    {1, 20, 20, 0.0, 0.0, 0},  {2, 25, 17, 0.05, 0.02, 0},  {3, 17, 25, 0.5, 0.1, 0},
    {4, 20, 20, 0.2, 0.3, 15}, {5, 20, 20, 2.0, 0.05, 3},   {6, 20, 20, 0.05, 0.5, 0},
    {7, 2, 20, 0.3, 0, 0},     {8, 20, 20, 0.02, 0.05, 20},
};

// As a file with steps of a millimetre has it.
struct Place {
  long long x = 0, y = 0;
  bool operator==(const Place&) const = default;
};
struct Piece {
  Place a, b;
  std::size_t ring = 0;
};

std::vector<Piece> PiecesOf(const PlaneLine& line, std::size_t ring) {
  std::vector<Place> places;
  for (const PlanePoint& point : line)
    places.push_back({std::llround(point.x * 1000), std::llround(point.y * 1000)});
  std::vector<Piece> pieces;
  for (std::size_t i = 0; i + 1 < places.size(); ++i) pieces.push_back({places[i], places[i + 1], ring});
  return pieces;
}

int SideOf(const Piece& piece, const Place& p) {
  const long long side =
      (piece.b.x - piece.a.x) * (p.y - piece.a.y) - (piece.b.y - piece.a.y) * (p.x - piece.a.x);
  return side > 0 ? 1 : side < 0 ? -1 : 0;
}

bool BoxesMeet(const Piece& p, const Piece& q) {
  return std::max(p.a.x, p.b.x) >= std::min(q.a.x, q.b.x) &&
         std::max(q.a.x, q.b.x) >= std::min(p.a.x, p.b.x) &&
         std::max(p.a.y, p.b.y) >= std::min(q.a.y, q.b.y) && std::max(q.a.y, q.b.y) >= std::min(p.a.y, p.b.y);
}

// Pairs of pieces that cross or touch, but for those that follow each other; and pieces without length.
int Contacts(const std::vector<Piece>& pieces) {
  int contacts = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const Piece& p = pieces[i];
    if (p.a == p.b) ++contacts;
    for (std::size_t j = i + 1; j < pieces.size(); ++j) {
      const Piece& q = pieces[j];
      if (!BoxesMeet(p, q) || SideOf(p, q.a) * SideOf(p, q.b) > 0 || SideOf(q, p.a) * SideOf(q, p.b) > 0)
        continue;
      const bool follows = p.ring == q.ring && (p.b == q.a || q.b == p.a);
      if (!follows) ++contacts;
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

class OnBeds : public testing::TestWithParam<MadeBed> {
 protected:
  DepthModel model_ = ModelOf(GetParam());
  Contours contours_ = ContoursOf(model_, HalfMetres, 1, nullptr);
};

TEST_P(OnBeds, NoLineTouchesAnother) {
  std::vector<Piece> pieces;
  for (std::size_t i = 0; i < contours_.lines.size(); ++i) {
    const std::vector<Piece> more = PiecesOf(contours_.lines[i].points, i);
    pieces.insert(pieces.end(), more.begin(), more.end());
  }
  ASSERT_FALSE(pieces.empty());
  EXPECT_EQ(Contacts(pieces), 0);
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

TEST_P(OnBeds, LinesEndAtTheChartsEdgeWithTheDeepOnTheirLeft) {
  const GridShape& shape = model_.shape;
  const ContourSurface surface = ContourSurfaceOf(model_, HalfMetres);
  const auto isInChart = [&](double x, double y) {
    const int column = static_cast<int>(std::floor((x - shape.west) / shape.cell - 0.5)) + 1;
    const int row = static_cast<int>(std::floor((shape.north - y) / shape.cell - 0.5)) + 1;
    return surface.squares[surface.SquareIndex(column, row)] != 0;
  };
  double least = 0;
  for (const ContourLine& line : contours_.lines) {
    EXPECT_LE(least, line.depth);
    least = line.depth;
    const PlanePoint &first = line.points.front(), &last = line.points.back();
    EXPECT_EQ(line.isClosed, first.x == last.x && first.y == last.y);
    for (const PlanePoint& end : {first, last}) {
      const double d = 1e-4;
      const int corners = isInChart(end.x - d, end.y - d) + isInChart(end.x + d, end.y - d) +
                          isInChart(end.x - d, end.y + d) + isInChart(end.x + d, end.y + d);
      EXPECT_EQ(corners, line.isClosed ? 4 : 2);
    }
    // What a ring holds beside its own line is deep where it runs counterclockwise: some node within is.
    if (!line.isClosed) continue;
    const bool isDeepInside = AreaWithin(line.points) > 0;
    bool isFound = false;
    for (int node = 0; node < shape.columns * shape.rows; ++node) {
      const double depth = static_cast<double>(surface.depth[static_cast<std::size_t>(node)]);
      isFound |= (isDeepInside ? depth >= line.depth : depth < line.depth) &&
                 IsWithin(line.points, shape.MiddleOf(node % shape.columns, node / shape.columns));
    }
    EXPECT_TRUE(isFound);
  }
}

TEST_P(OnBeds, AreasAreValidAndCoverTheChart) {
  const ContourSurface surface = ContourSurfaceOf(model_, HalfMetres);
  const double squares = std::accumulate(surface.squares.begin(), surface.squares.end(), 0.0);
  double covered = 0;
  for (const DepthArea& area : contours_.areas) {
    std::vector<Piece> pieces;
    EXPECT_LT(area.depthMin, area.depthMax);
    for (std::size_t i = 0; i < area.rings.size(); ++i) {
      const PlaneLine& ring = area.rings[i];
      const double within = AreaWithin(ring);
      covered += within;
      EXPECT_EQ(within > 0, i == 0);
      EXPECT_TRUE(i == 0 || IsWithin(area.rings[0], ring[0]));
      const std::vector<Piece> more = PiecesOf(ring, i);
      EXPECT_EQ(more.front().a, more.back().b);
      pieces.insert(pieces.end(), more.begin(), more.end());
    }
    EXPECT_EQ(Contacts(pieces), 0) << area.depthMin;
  }
  EXPECT_NEAR(covered, squares * model_.shape.cell * model_.shape.cell, 1e-4);
}

TEST_P(OnBeds, EachNodeLiesInTheAreaOfItsDepth) {
  const ContourSurface surface = ContourSurfaceOf(model_, HalfMetres);
  const GridShape& shape = model_.shape;
  int found = 0, missed = 0, inside = 0;
  for (int row = 0; row < shape.rows; ++row) {
    for (int column = 0; column < shape.columns; ++column) {
      if (!surface.IsInside(column, row)) continue;
      ++inside;
      const std::size_t node = shape.IndexOf(column, row);
      const double depth = static_cast<double>(model_.depth[node]);
      for (const DepthArea& area : contours_.areas) {
        const PlanePoint middle = shape.MiddleOf(column, row);
        const auto isWithin = [&](const PlaneLine& ring) { return IsWithin(ring, middle); };
        if (std::count_if(area.rings.begin(), area.rings.end(), isWithin) != 1) continue;
        ++found;
        EXPECT_GE(depth, area.depthMin);
        EXPECT_LE(static_cast<double>(surface.depth[node]), area.depthMax);
        if (depth > area.depthMax + 2 * static_cast<double>(model_.uncertainty[node])) ++missed;
      }
    }
  }
  EXPECT_EQ(found, inside);
  // Hollows of some cells go, and such a bed may have many; without noise there are none.
  EXPECT_LE(missed, GetParam().noise > 0.1 ? inside / 3 : inside / 100);
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
    const Contours contours = ContoursOf(model, depths, 1, nullptr);
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
  const Contours contours = ContoursOf(model, depths, 1, nullptr);
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
    for (const ContourLine& line : ContoursOf(model, depths, 1, nullptr).lines) {
      if (line.isIndex) found.push_back(line.depth);
    }
    EXPECT_EQ(found, indices);
  }
}

}  // namespace
}  // namespace sondrix
