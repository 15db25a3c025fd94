#include "sounders/sl/track_mending.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

// The variance of a rounding error is a twelfth of a square unit.
constexpr double RoundingWeight = 12;
// Weighs the bending against it: the inverse of the spectral density of a boat's acceleration, s^3/unit^2. By
// trial on made tracks from a drift to 4 m/s, straight, in circles and in serpentines.
constexpr double Bending = 20;
constexpr double AlmostOutside = 0.45;  // units from a fix, from which on its weight is raised
constexpr int MostRounds = 6;

// A spline through given places differs from one that is drawn to them so strongly by nothing that matters.
constexpr double ThroughWeight = 1e6;
constexpr double ThroughBending = 1e-3;

constexpr double MostSlope = 3;    // of the chord's
constexpr double SlopeRoom = 0.5;  // units beyond the chord

double WithinLimit(double speed, double limit) { return std::clamp(speed, -limit, limit); }

// The greatest velocity in each axis that a track between two knots may have, units a second.
double SpeedLimit(const TrackKnot& a, const TrackKnot& b, double most) {
  return most * (std::hypot(b.x - a.x, b.y - a.y) + SlopeRoom) / std::abs(b.time - a.time);
}

}  // namespace

void TrackMender::Solve(std::span<const FixMoment> fixes, double bending) {
  const std::size_t count = fixes.size();
  for (std::size_t i = 0; i < count; ++i) {
    rows_[i] = {};
    rows_[i].xx = weight_[i];
    rows_[i].vv = 1e-9;  // for a last row that no interval holds
    rows_[i].x = weight_[i] * target_[i];
  }
  // The energy of a cubic with the places x0, x1 and velocities v0, v1 at the ends of an interval h, d = x1 -
  // x0: 12 d^2 / h^3 - 12 d (v0 + v1) / h^2 + 4 (v0^2 + v0 v1 + v1^2) / h.
  for (std::size_t i = 0; i + 1 < count; ++i) {
    const double h = fixes[i + 1].time - fixes[i].time;
    const double k1 = 4 * bending / h, k2 = 6 * bending / (h * h), k3 = 12 * bending / (h * h * h);
    Row &row = rows_[i], &next = rows_[i + 1];
    row.xx += k3, row.xv += k2, row.vv += k1;
    next.xx += k3, next.xv -= k2, next.vv += k1;
    row.nextXx = -k3, row.nextXv = k2, row.nextVx = -k2, row.nextVv = k1 / 2;
  }
  // Each block is eliminated from the one behind it; then backwards.
  for (std::size_t i = 0; i + 1 < count; ++i) {
    Row &row = rows_[i], &next = rows_[i + 1];
    const double scale = 1 / (row.xx * row.vv - row.xv * row.xv);
    const double xx = row.vv * scale, xv = -row.xv * scale, vv = row.xx * scale;
    const double wXx = xx * row.nextXx + xv * row.nextVx, wXv = xx * row.nextXv + xv * row.nextVv;
    const double wVx = xv * row.nextXx + vv * row.nextVx, wVv = xv * row.nextXv + vv * row.nextVv;
    next.xx -= row.nextXx * wXx + row.nextVx * wVx;
    next.xv -= row.nextXx * wXv + row.nextVx * wVv;
    next.vv -= row.nextXv * wXv + row.nextVv * wVv;
    const double x = xx * row.x + xv * row.v, v = xv * row.x + vv * row.v;
    next.x -= row.nextXx * x + row.nextVx * v;
    next.v -= row.nextXv * x + row.nextVv * v;
    row.nextXx = wXx, row.nextXv = wXv, row.nextVx = wVx, row.nextVv = wVv;
    row.x = x, row.v = v;
  }
  const Row& last = rows_[count - 1];
  const double scale = 1 / (last.xx * last.vv - last.xv * last.xv);
  x_[count - 1] = (last.vv * last.x - last.xv * last.v) * scale;
  v_[count - 1] = (last.xx * last.v - last.xv * last.x) * scale;
  for (std::size_t i = count - 1; i-- > 0;) {
    const Row& row = rows_[i];
    x_[i] = row.x - row.nextXx * x_[i + 1] - row.nextXv * v_[i + 1];
    v_[i] = row.v - row.nextVx * x_[i + 1] - row.nextVv * v_[i + 1];
  }
}

void TrackMender::MendAxis(std::span<const FixMoment> fixes, double FixMoment::*stored) {
  const std::size_t count = fixes.size();
  for (std::size_t i = 0; i < count; ++i) target_[i] = fixes[i].*stored - fixes[0].*stored;
  if (std::all_of(target_.begin(), target_.begin() + static_cast<std::ptrdiff_t>(count),
                  [](double place) { return place == 0; })) {
    std::fill_n(x_.begin(), count, 0.0);
    std::fill_n(v_.begin(), count, 0.0);
    return;
  }
  std::fill_n(weight_.begin(), count, RoundingWeight);
  bool isInside = false;
  for (int round = 0; round < MostRounds && !isInside; ++round) {
    Solve(fixes, Bending);
    isInside = true;
    for (std::size_t i = 0; i < count; ++i) {
      const double off = std::abs(x_[i] - target_[i]) / AlmostOutside;
      if (off <= 1) continue;
      weight_[i] *= std::min(1.5 * off * off, 8.0);
      isInside = false;
    }
  }
  bool isMoved = false;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = std::clamp(x_[i], target_[i] - MostFromFix, target_[i] + MostFromFix);
    isMoved |= x != x_[i];
    target_[i] = x;
  }
  if (!isMoved) return;
  std::fill_n(weight_.begin(), count, ThroughWeight);
  Solve(fixes, ThroughBending);
  std::copy_n(target_.begin(), count, x_.begin());
}

std::span<const TrackKnot> TrackMender::Mend(std::span<const FixMoment> fixes) {
  const std::size_t count = fixes.size();
  if (knots_.size() < count) {
    knots_.resize(count);
    rows_.resize(count);
    for (auto* values : {&target_, &weight_, &x_, &v_}) values->resize(count);
  }
  for (std::size_t i = 0; i < count; ++i) knots_[i] = {fixes[i].time, fixes[i].x, fixes[i].y};
  if (count < 2) return std::span(knots_).first(count);
  MendAxis(fixes, &FixMoment::x);
  for (std::size_t i = 0; i < count; ++i) {
    knots_[i].x = fixes[0].x + x_[i];
    knots_[i].speedX = v_[i];
  }
  MendAxis(fixes, &FixMoment::y);
  for (std::size_t i = 0; i < count; ++i) {
    knots_[i].y = fixes[0].y + x_[i];
    knots_[i].speedY = v_[i];
  }
  return std::span(knots_).first(count);
}

TrackPlace PlaceBetween(const TrackKnot& from, const TrackKnot& to, double time) {
  const double h = to.time - from.time;
  const double u = (time - from.time) / h;
  const double limit = SpeedLimit(from, to, MostSlope);
  const auto along = [u, h, limit](double x0, double x1, double v0, double v1) {
    const double d = x1 - x0;
    const double m0 = h * WithinLimit(v0, limit), m1 = h * WithinLimit(v1, limit);
    return x0 + u * (m0 + u * (3 * d - 2 * m0 - m1 + u * (m0 + m1 - 2 * d)));
  };
  return {along(from.x, to.x, from.speedX, to.speedX), along(from.y, to.y, from.speedY, to.speedY)};
}

TrackPlace PlaceBeyond(const TrackKnot& end, const TrackKnot& beside, double time) {
  const double limit = SpeedLimit(end, beside, 1);
  const double h = time - end.time;
  return {end.x + h * WithinLimit(end.speedX, limit), end.y + h * WithinLimit(end.speedY, limit)};
}

}  // namespace sondrix
