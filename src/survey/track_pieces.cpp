#include "survey/track_pieces.h"

#include "survey/median.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sondrix {
namespace {

constexpr std::size_t EndSize = 5, LongEndSize = 11;  // soundings that tell a level
constexpr double LongEndWay = 10;                     // metres
constexpr float LargeNoise = 0.3F;                    // metres
constexpr std::uint32_t MaxLeftOut = 5;               // soundings between two of a piece
constexpr float MaxSlope = 1.5F;                      // metres a metre that an end may go on with
constexpr float JumpNoises = 4;
constexpr float SideNoises = 1.5F, OwnNoises = 4;
constexpr float SharpNoises = 6;  // of a jump from one sounding to the next
constexpr float JumpOfDepth = 0.25F;
constexpr float LargeJump = 3;  // metres

// The soundings at the end of some points that tell a level: a few, or more within 10 m where they are noisy.
std::span<const TrackPoint> LastOf(std::span<const TrackPoint> points, std::size_t most) {
  std::size_t count = std::min(EndSize, points.size());
  while (count < std::min(most, points.size()) &&
         points.back().way - points[points.size() - count - 1].way <= LongEndWay) {
    ++count;
  }
  return points.last(count);
}

std::span<const TrackPoint> FirstOf(std::span<const TrackPoint> points, std::size_t most) {
  std::size_t count = std::min(EndSize, points.size());
  while (count < std::min(most, points.size()) && points[count].way - points.front().way <= LongEndWay)
    ++count;
  return points.first(count);
}

std::size_t EndSizeFor(float noise) { return noise > LargeNoise ? LongEndSize : EndSize; }

struct Cut {
  std::size_t behind = 0;  // the first point behind the jump
  float step = 0;          // from the sounding before it, metres
};

}  // namespace

std::vector<TrackPoint> PointsOf(const TrackSection& section) {
  const auto used = std::count(section.fate.begin(), section.fate.end(), Fate::Used);
  std::vector<TrackPoint> points;
  points.reserve(static_cast<std::size_t>(used));
  for (std::size_t i = 0; i < section.size(); ++i) {
    if (section.fate[i] != Fate::Used) continue;
    points.push_back({section.way[i], section.depth[i], static_cast<std::uint32_t>(i)});
  }
  return points;
}

PieceEnd EndOf(std::span<const TrackPoint> points, bool atFirst) {
  const double way = atFirst ? points.front().way : points.back().way;
  std::array<float, LongEndSize*(LongEndSize - 1) / 2> slopes{};
  std::size_t count = 0;
  for (std::size_t a = 0; points.size() > 2 && a < points.size(); ++a) {
    for (std::size_t b = a + 1; b < points.size(); ++b) {
      const double run = points[b].way - points[a].way;
      if (run > 0) slopes[count++] = (points[b].depth - points[a].depth) / static_cast<float>(run);
    }
  }
  PieceEnd end{way, 0, 0, atFirst ? points.front().depth : points.back().depth, 1};
  if (count > 0) end.slope = std::clamp(MedianOf(std::span(slopes.data(), count)), -MaxSlope, MaxSlope);
  if (points.size() >= EndSize) end.fall = std::min(1.0F, 2 * std::abs(end.slope) + 0.1F);
  std::array<float, LongEndSize> levels{};
  for (std::size_t k = 0; k < points.size(); ++k) {
    levels[k] = points[k].depth + end.slope * static_cast<float>(way - points[k].way);
  }
  end.level = MedianOf(std::span(levels.data(), points.size()));
  return end;
}

Jump JumpBetween(const PieceEnd& end, const PieceEnd& begin, float noise) {
  const auto gap = static_cast<float>(begin.way - end.way);
  const std::array<float, 4> falls{0, end.slope * gap, begin.slope * gap,
                                   (end.slope + begin.slope) / 2 * gap};
  // A sounding beside the gap that is off its own level tells nothing.
  const auto depthOf = [&](const PieceEnd& side) {
    return std::abs(side.depth - side.level) <= OwnNoises * noise + gap ? side.depth : side.level;
  };
  const float levels = begin.level - end.level, depths = depthOf(begin) - depthOf(end);
  Jump jump{levels, std::min(levels, depths), std::max(levels, depths)};
  for (const float fall : falls) {
    if (std::abs(levels - fall) < std::abs(jump.least)) jump.least = levels - fall;
    const float beside = std::copysign(std::abs(depths - fall) + SideNoises * noise, depths - fall);
    if (std::abs(beside) < std::abs(jump.least)) jump.least = beside;
    jump.low = std::min({jump.low, levels - fall, depths - fall});
    jump.high = std::max({jump.high, levels - fall, depths - fall});
  }
  return jump;
}

float LeastJump(float noise, float depth) {
  return std::max(JumpNoises * noise, std::min(JumpOfDepth * depth, LargeJump));
}

bool IsGap(const TrackSection& section, const TrackPoint& before, const TrackPoint& behind) {
  return section.index[behind.at] - section.index[before.at] > MaxLeftOut;
}

std::vector<TrackPiece> PiecesOf(const TrackSection& section, std::span<const TrackPoint> points) {
  std::vector<TrackPiece> pieces;
  if (points.empty()) return pieces;
  std::vector<Cut> cuts{{0, 0}};
  for (std::size_t i = 1; i < points.size(); ++i) {
    const float step = points[i].depth - points[i - 1].depth;
    if (IsGap(section, points[i - 1], points[i])) {
      cuts.push_back({i, 0});
      continue;
    }
    const float noise = section.NoiseAt(points[i].at);
    const float least = LeastJump(noise, std::min(points[i].depth, points[i - 1].depth));
    if (std::abs(step) <= least / 2) continue;
    const auto before = points.first(i), behind = points.subspan(i);
    PieceEnd end = EndOf(LastOf(before, EndSize), false), begin = EndOf(FirstOf(behind, EndSize), true);
    bool isJump = std::abs(JumpBetween(end, begin, noise).least) > least;
    if (!isJump && noise > LargeNoise) {
      end = EndOf(LastOf(before, LongEndSize), false);
      begin = EndOf(FirstOf(behind, LongEndSize), true);
      isJump = std::abs(JumpBetween(end, begin, noise).least) > least;
    }
    if (!isJump && std::abs(step) > std::max(least, SharpNoises * noise)) {
      // Fewer soundings than tell a level may lie between two jumps.
      const auto gap = static_cast<float>(points[i].way - points[i - 1].way);
      end.level = points[i - 1].depth;
      begin.level = points[i].depth;
      isJump = std::abs(JumpBetween(end, begin, noise).least) > std::max({least, SharpNoises * noise, gap});
    }
    if (!isJump) continue;
    // Noise beside a jump can look like a part of it: the sharpest stands.
    Cut& last = cuts.back();
    if (cuts.size() > 1 && i - last.behind <= 2 && (step > 0) == (last.step > 0)) {
      if (std::abs(step) > std::abs(last.step)) last = {i, step};
    } else {
      cuts.push_back({i, step});
    }
  }
  pieces.reserve(cuts.size());
  for (std::size_t c = 0; c < cuts.size(); ++c) {
    const std::size_t first = cuts[c].behind,
                      behind = c + 1 < cuts.size() ? cuts[c + 1].behind : points.size();
    const auto piece = points.subspan(first, behind - first);
    const std::size_t most = EndSizeFor(section.NoiseAt(piece.front().at));
    pieces.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(behind - 1),
                      EndOf(FirstOf(piece, most), true), EndOf(LastOf(piece, most), false)});
  }
  return pieces;
}

}  // namespace sondrix
