#include "samples/made_bed.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;

// Evenly from the one to the other.
double Between(double low, double high, XorShift& random) {
  return low + (high - low) * (random.Signed() + 1) / 2;
}

}  // namespace

MadeShore::MadeShore(double middleU, double middleV, double length, double width, double ragged,
                     XorShift& random)
    : u(middleU), v(middleV), halfLength(length), halfWidth(width) {
  for (const double count : {2.0, 3.0, 5.0, 8.0, 13.0}) {
    swings_.push_back(
        {count, ragged / std::sqrt(count) * Between(0.5, 1, random), Between(0, 2 * Pi, random)});
  }
}

double MadeShore::Off(double atU, double atV) const {
  const double du = atU - u, dv = atV - v;
  const double angle = std::atan2(dv, du);
  double radius = 1;
  for (const Swing& swing : swings_) radius += swing.size * std::cos(swing.count * angle + swing.phase);
  radius /= std::hypot(std::cos(angle) / halfLength, std::sin(angle) / halfWidth);
  return radius - std::hypot(du, dv);
}

MadeBed::MadeBed(const BedKind& kind, double halfLength, double halfWidth, XorShift& random)
    : kind_(kind),
      meanderLength_(halfLength * Between(0.7, 1.0, random)),
      meanderPhase_(Between(0, 2 * Pi, random)) {
  for (int i = 0; i < kind.mounds; ++i) {
    const double sign = random.Signed() < 0 ? -1 : 1;
    mounds_.push_back({halfLength * random.Signed(), halfWidth * random.Signed(),
                       sign * kind.moundHeight * Between(0.33, 1, random),
                       kind.moundWidth * Between(0.33, 1, random)});
  }
  if (kind.waves <= 0) return;
  constexpr int count = 240;
  double power = 0;
  for (int i = 0; i < count; ++i) {
    const double length = kind.shortest * std::pow(kind.longest / kind.shortest, (i + 0.5) / count);
    const double direction = kind.spread * random.Signed();
    const double height = std::pow(length, kind.hurst);
    power += height * height / 2;
    waves_.push_back({2 * Pi / length * std::cos(direction), 2 * Pi / length * std::sin(direction), height,
                      Between(0, 2 * Pi, random)});
  }
  for (Wave& wave : waves_) wave.height *= kind.waves / std::sqrt(power);
}

double MadeBed::ChannelAt(double u, double v) const {
  const double turn = 2 * Pi * u / meanderLength_ + meanderPhase_;
  const double off = v - kind_.meander * (std::sin(turn) + 0.3 * std::sin(2.7 * turn));
  return kind_.channel / 2 * (1 - std::tanh((std::abs(off) - kind_.channelHalf) / kind_.channelWall));
}

double MadeBed::Depth(double u, double v, double off) const {
  double depth = kind_.base;
  for (const Mound& mound : mounds_) {
    const double away = std::hypot(u - mound.u, v - mound.v) / mound.width;
    depth -= mound.height * std::exp(-away * away / 2);
  }
  for (const Wave& wave : waves_) depth += wave.height * std::cos(wave.ku * u + wave.kv * v + wave.phase);
  if (kind_.steps > 0) {
    const double whole = std::floor(depth / kind_.steps), rest = depth / kind_.steps - whole;
    depth = kind_.steps * (whole + 0.5 + 0.5 * std::tanh((rest - 0.5) * 12));
  }
  if (kind_.channel > 0) depth += ChannelAt(u, v);
  return std::max(depth, 0.6) * (1 - std::exp(-off / kind_.shore));
}

}  // namespace sondrix
