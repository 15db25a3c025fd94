#pragma once

#include "chart/grid.h"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace sondrix {

// A depth that the surface is drawn to, between four nodes of a grid. Nodes are the middles of cells.
struct GridPoint {
  float x = 0, y = 0;  // in nodes: 0,0 is the first node, y grows with the rows
  float depth = 0;     // metres
  float weight = 1;
};

// What a surface u on a grid costs, in units of nodes:
//   sum of weight (B u - depth)^2  +  bending sum of u_xx^2 + 2 u_xy^2 + u_yy^2  +  stretching sum of u_x^2 +
//   u_y^2
// B is bilinear. The surface with the smallest cost is a smoothing spline in tension (Smith and Wessel, 1990,
// Geophysics 55, 293-305; smoothing after Wahba, 1990); its edges are free. Differences that reach a node out
// of the domain count nothing.
class SplineEnergy {
 public:
  // domain: 1 for nodes that belong to it, 0 for others, by rows. The points must be in rising order of their
  // row and lie between nodes of the grid.
  SplineEnergy(int columns, int rows, std::vector<float> domain, std::vector<GridPoint> points, float bending,
               float stretching);

  int Columns() const { return columns_; }
  int Rows() const { return rows_; }
  const std::vector<float>& Domain() const { return domain_; }

  // Half the gradient of the cost without the depths: out = A u, for rows from..to; returns nothing of what
  // lies out of the domain but 0.
  void Apply(std::span<const float> u, std::span<float> out, int from, int to) const;
  // What the depths pull with: A u = Pull at the smallest cost.
  std::vector<float> Pull() const;
  // The diagonal of A, 1 out of the domain.
  std::vector<float> Diagonal() const;

 private:
  std::size_t RowStart(int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_);
  }
  void AddPoints(std::span<const float> u, std::span<float> out, int row) const;

  int columns_, rows_;
  std::vector<float> domain_;
  std::vector<GridPoint> points_;
  std::vector<std::size_t> firstOfRow_;  // of the points between a row and the next
  float bending_, stretching_;
};

// Draws u nearer to the smallest cost by so many steps of conjugate gradients, scaled by the diagonal
// (Hestenes and Stiefel, 1952). The same for any number of threads. EndAsked, where isToEnd is given and
// true.
void RelaxSpline(const SplineEnergy& energy, std::vector<float>& u, int steps, int threads,
                 const std::function<bool()>& isToEnd);

}  // namespace sondrix
