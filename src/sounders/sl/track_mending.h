#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace sondrix {

// A recorder stores the boat's place in whole units at the moments of its fixes, and repeats it until the
// next: the stored track is a stair that lags behind. Here it becomes a smooth curve through the fixes.

// A place as it was stored at the moment of a fix: the true one lay within half a unit of it.
struct FixMoment {
  double time = 0;      // seconds
  double x = 0, y = 0;  // units
};

// A point of the mended track and the boat's velocity there.
struct TrackKnot {
  double time = 0;
  double x = 0, y = 0;
  double speedX = 0, speedY = 0;  // units a second
};

// How far from its stored place, in units and in each axis, the track passes at most at a fix. Less than half
// a unit, so that it stays so when the place is rounded to degrees of 8 decimals.
inline constexpr double MostFromFix = 0.49;

// Fixes have to lie further apart than this, seconds.
inline constexpr double LeastFixSpacing = 0.01;

// The smoothest track that keeps to MostFromFix: a cubic smoothing spline in each axis (C. H. Reinsch,
// "Smoothing by spline functions", 1967; here with places and velocities as unknowns, so that one sweep over
// blocks of 2 x 2 solves it). Its weights are those of a rounding error; where it leaves a fix's square they
// are raised and it is solved anew (iteratively reweighted least squares), and what is still outside is set
// on the edge. One knot a fix; times increase by more than LeastFixSpacing.
class TrackMender {
 public:
  std::span<const TrackKnot> Mend(std::span<const FixMoment> fixes);

 private:
  // One 2 x 2 block on the diagonal and the one to its right, with the right-hand side. Symmetric: row by
  // row.
  struct Row {
    double xx = 0, xv = 0, vv = 0;
    double nextXx = 0, nextXv = 0, nextVx = 0, nextVv = 0;
    double x = 0, v = 0;
  };

  void MendAxis(std::span<const FixMoment> fixes, double FixMoment::*stored);
  // Leaves the spline's places and velocities in x_ and v_.
  void Solve(std::span<const FixMoment> fixes, double bending);

  std::vector<TrackKnot> knots_;
  std::vector<Row> rows_;
  std::vector<double> target_, weight_, x_, v_;
};

// Where the boat was between two knots: the cubic with their places and velocities, these limited so that it
// doesn't swing out where the boat stopped or leapt (after F. N. Fritsch and R. E. Carlson, "Monotone
// piecewise cubic interpolation", 1980: a slope of at most three times the chord's, and half a unit beyond).
struct TrackPlace {
  double x = 0, y = 0;  // units
};
TrackPlace PlaceBetween(const TrackKnot& from, const TrackKnot& to, double time);

// Where it was a short time outside the track, by the velocity at its end; limited as between end, the first
// or last knot, and the knot beside it.
TrackPlace PlaceBeyond(const TrackKnot& end, const TrackKnot& beside, double time);

}  // namespace sondrix
