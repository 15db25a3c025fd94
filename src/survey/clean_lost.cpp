#include "survey/clean_lost.h"

#include "survey/track_pieces.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr float StepHeight = 5;    // metres
constexpr float LargestFall = 15;  // metres, that a bed may fall where nothing is told
constexpr float FallCost = 0.45F, StepCost = 1;
constexpr float WallCost = 6;
constexpr float LostCost = 4, ShortLostCost = 1, StepLostCost = 3.5F, LikelyLostCost = 0.65F,
                EchoStepCost = 2, NeverCost = 1e9F;
constexpr float WayCost = 0.5F, MaxWayCost = 3, UsualWay = 20;  // for each doubling of so many metres
constexpr float LongWayCost = 1.5F, MaxLongWayCost = 4, LongestUsualWay = 150;  // for each beyond it
constexpr float ShareCost = 15, InnerCost = 0.25F, MaxInnerCost = 3;
constexpr float OneBedCost = 2.5F, MaxOneBedCost = 5, AcrossCost = 1.5F;
constexpr double ShortWay = 2, LongWay = 8;                       // metres
constexpr float EchoTolerance = 0.05F, MaxEchoTolerance = 0.15F;  // of the logarithm of a ratio
constexpr float OffsetTolerance = 0.12F, OffsetNoises = 2.3F;
constexpr float SideNoises = 1.5F;
constexpr float StepLikeness = 0.3F;  // metres
constexpr std::size_t MaxPiecesBack = 64;
constexpr std::size_t FewSoundings = 5;  // fewer than a stretch
constexpr double EndLostCost = 1;        // of so few where the section begins or ends

struct Link {
  double cost = 0;           // of the best chain that ends here
  std::uint32_t before = 0;  // the piece before it in that chain
};

class Chain {
 public:
  Chain(const TrackSection& section, std::span<const TrackPoint> points, std::span<const TrackPiece> pieces)
      : section_(section),
        points_(points),
        pieces_(pieces),
        links_(pieces.size()),
        goesOn_(pieces.size()),
        inner_(pieces.size()),
        halved_(pieces.size()) {}

  // For each piece, whether it is kept.
  std::vector<bool> Kept() {
    const std::size_t count = pieces_.size();
    for (std::size_t i = 1; i < count; ++i) {
      const float fall = MostOfFall(pieces_[i - 1].end, pieces_[i].begin);
      const float jump = CostBetween(pieces_[i - 1], pieces_[i], fall);
      inner_[i] = inner_[i - 1] + std::min(jump, MaxInnerCost) + InnerCost;
      const float asHalf = std::max(StepCost, CostBetween(pieces_[i - 1], pieces_[i], fall, 2));
      halved_[i] = halved_[i - 1] + std::min({jump, asHalf, MaxInnerCost}) + InnerCost;
      links_[i] = {links_[i - 1].cost + jump + CostOfLostAcross(i), static_cast<std::uint32_t>(i - 1)};
      if (pieces_[i].first < FewSoundings && EndLostCost < links_[i].cost) {
        links_[i] = {EndLostCost, static_cast<std::uint32_t>(i)};
      }
      float sound = 0;
      for (std::size_t back = 2; back <= std::min(i, MaxPiecesBack); ++back) {
        const std::size_t j = i - back;
        // Of what lies between the two, what goes on with the bed of either.
        if (back > 2) {
          sound += IsOneBed(pieces_[j + 1].end, pieces_[i].begin, NoiseAt(pieces_[i])) ? OneBedCost : 0;
          if (IsOneBed(pieces_[j].end, pieces_[i - 1].begin, NoiseAt(pieces_[j]))) goesOn_[j] += OneBedCost;
        }
        if (links_[j].cost >= links_[i].cost) continue;
        const double cost = links_[j].cost + CostOfLosing(j, i) + CostOfLosingAcross(j, i) +
                            std::min(std::max(sound, goesOn_[j]), MaxOneBedCost);
        if (cost < links_[i].cost) links_[i] = {cost, static_cast<std::uint32_t>(j)};
      }
    }
    std::size_t last = count - 1;
    for (std::size_t i = count - 1; i-- > 0 && pieces_[i].last + FewSoundings >= points_.size() - 1;) {
      if (links_[i].cost + EndLostCost < links_[last].cost) last = i;
    }
    std::vector<bool> kept(count, false);
    for (std::size_t i = last;; i = links_[i].before) {
      kept[i] = true;
      if (links_[i].before == i) break;
    }
    return kept;
  }

 private:
  float NoiseAt(const TrackPiece& piece) const { return section_.NoiseAt(points_[piece.first].at); }

  static bool IsOneBed(const PieceEnd& end, const PieceEnd& begin, float noise) {
    return std::abs(begin.level - end.level) <= LeastJump(noise, std::min(begin.level, end.level));
  }

  // What keeping both sides of a jump costs; the bed may have fallen evenly across the gap instead.
  static float CostOfJump(float jump, float fall, float noise, float depth) {
    const float height = std::abs(jump);
    if (height <= LeastJump(noise, depth)) return 0;
    if (height <= fall) return FallCost;
    const float most = fall + MostOfStep(noise);
    const float beyond = (height - most) / std::max(1.0F, noise);
    return StepCost + (WallCost - StepCost) * std::clamp(beyond, 0.0F, 1.0F);
  }

  static float MostOfStep(float noise) { return StepHeight + std::max(0.5F, 3 * noise); }

  static float MostOfFall(const PieceEnd& end, const PieceEnd& begin) {
    return std::min(LargestFall, std::max(end.fall, begin.fall) * static_cast<float>(begin.way - end.way));
  }

  float CostBetween(const TrackPiece& before, const TrackPiece& behind, float fall, float factor = 1) const {
    const float noise = NoiseAt(behind);
    return CostOfJump(JumpBetween(before.end, behind.begin, noise).least / factor, fall, noise,
                      std::min(before.end.level, behind.begin.level));
  }

  double WayOf(std::size_t first, std::size_t last) const {
    return pieces_[last].end.way - pieces_[first].begin.way;
  }

  // Of losing what lies behind j up to i and goes on with the bed kept before j, where j is shorter.
  float CostOfLosingAcross(std::size_t j, std::size_t i) const {
    const std::size_t k = links_[j].before;
    const bool goesOn = k + 1 == j && WayOf(j, j) < WayOf(j + 1, i - 1) &&
                        IsOneBed(pieces_[k].end, pieces_[j + 1].begin, NoiseAt(pieces_[j]));
    return goesOn ? AcrossCost : 0;
  }

  // Of having lost what lies before i - 1 and goes on with i, where i - 1 is shorter.
  float CostOfLostAcross(std::size_t i) const {
    const std::size_t j = i - 1, k = links_[j].before;
    const bool goesOn = k + 1 < j && WayOf(j, j) < WayOf(k + 1, j - 1) &&
                        IsOneBed(pieces_[j - 1].end, pieces_[i].begin, NoiseAt(pieces_[j]));
    return goesOn ? AcrossCost : 0;
  }

  // Of losing all pieces between two that are kept.
  float CostOfLosing(std::size_t j, std::size_t i) const {
    const TrackPiece &before = pieces_[j], &behind = pieces_[i], &first = pieces_[j + 1],
                     &last = pieces_[i - 1];
    const float noise = NoiseAt(first);
    const Jump jumpIn = JumpBetween(before.end, first.begin, noise);
    const Jump jumpOut = JumpBetween(last.end, behind.begin, noise);
    const float in = jumpIn.least, out = jumpOut.least;
    const float least = LeastJump(noise, std::min(before.end.level, behind.begin.level));
    if ((in > 0) == (out > 0) && std::min(std::abs(in), std::abs(out)) > least) return NeverCost;
    const double way = (last.end.way + behind.begin.way - before.end.way - first.begin.way) / 2;
    const auto gap = static_cast<float>(first.begin.way - before.end.way);
    float cost = LostCost;
    const float fallen = (MostOfFall(before.end, first.begin) + MostOfFall(last.end, behind.begin)) / 2;
    const bool isEcho = IsEcho(before.end, first.begin, last.end, behind.begin, noise);
    if (isEcho || IsOffset(jumpIn, jumpOut, fallen, noise)) {
      cost = LikelyLostCost;
    } else if (IsEchoBesideStep(before.end, first.begin, last.end, behind.begin, noise)) {
      cost = LikelyLostCost + EchoStepCost;
    } else {
      const double shortness = std::clamp((LongWay - way) / (LongWay - ShortWay), 0.0, 1.0);
      cost += (ShortLostCost - LostCost) * static_cast<float>(shortness);
      if (std::abs(in) <= MostOfStep(noise) + MostOfFall(before.end, first.begin) ||
          std::abs(out) <= MostOfStep(noise) + MostOfFall(last.end, behind.begin)) {
        cost += StepLostCost * static_cast<float>(1 - shortness);
      }
    }
    const float share =
        static_cast<float>(behind.first - before.last - 1) / static_cast<float>(points_.size());
    const bool isDoubled = isEcho && first.begin.level > before.end.level;
    const auto inner =
        static_cast<float>(isDoubled ? halved_[i - 1] - halved_[j + 1] : inner_[i - 1] - inner_[j + 1]);
    return CostBetween(before, behind, static_cast<float>(behind.begin.way - before.end.way)) + cost +
           ShareCost * share * share + inner + CostOfWay(way, gap);
  }

  static float CostOfWay(double way, float gap) {
    const float usual = UsualWay * (1 + gap), longest = LongestUsualWay * (1 + gap);
    return std::min(MaxWayCost, WayCost * std::log2(1 + static_cast<float>(way) / usual)) +
           std::clamp(LongWayCost * std::log2(static_cast<float>(way) / longest), 0.0F, MaxLongWayCost);
  }

  // Whether the depth goes off by more than a step and comes back by the same.
  static bool IsOffset(const Jump& in, const Jump& out, float fallen, float noise) {
    const float height = (std::abs(in.least) + std::abs(out.least)) / 2;
    const float lower = std::min(std::abs(in.least), std::abs(out.least));
    if (lower <= StepHeight + std::max(0.5F, OffsetNoises * noise)) return false;
    const float apart = std::max(in.low + out.low, -in.high - out.high);
    return height > fallen + StepHeight + std::max(0.5F, OffsetNoises * noise) &&
           apart <= OffsetTolerance * height + 2 * noise;
  }

  // Whether the depth is halved and doubled again, or doubled and halved; not if steps would look the same.
  static bool IsEcho(const PieceEnd& before, const PieceEnd& first, const PieceEnd& last,
                     const PieceEnd& behind, float noise) {
    const float in = std::abs(JumpBetween(before, first, noise).least);
    const float out = std::abs(JumpBetween(last, behind, noise).least);
    const float likeness = std::max(StepLikeness, 3 * noise);
    if (std::abs(in - StepHeight) <= likeness && std::abs(out - StepHeight) <= likeness) return false;
    const bool isDoubled = first.level > before.level;
    const float factor = isDoubled ? 2 : 0.5F;
    return IsTimes(factor, before, first, noise) && IsTimes(1 / factor, last, behind, noise);
  }

  // Whether one end is that of an echo, and the other that of the same echo with a step of the bed there.
  static bool IsEchoBesideStep(const PieceEnd& before, const PieceEnd& first, const PieceEnd& last,
                               const PieceEnd& behind, float noise) {
    const float in = std::abs(JumpBetween(before, first, noise).least);
    const float out = std::abs(JumpBetween(last, behind, noise).least);
    const float factor = first.level > before.level ? 2 : 0.5F;
    const auto isStep = [noise](float a, float b) {
      return std::abs(std::abs(a - b) - StepHeight) <= std::max(0.5F, SideNoises * noise);
    };
    return (out > MostOfStep(noise) && IsTimes(factor, before, first, noise) &&
            isStep(last.level / factor, behind.level)) ||
           (in > MostOfStep(noise) && IsTimes(1 / factor, last, behind, noise) &&
            isStep(first.level / factor, before.level));
  }

  // Whether the depth behind a gap is that many times the depth before it, by the levels half across the gap
  // or by the soundings beside it.
  static bool IsTimes(float factor, const PieceEnd& end, const PieceEnd& begin, float noise) {
    const auto half = static_cast<float>(begin.way - end.way) / 2;
    const float left = end.level + end.slope * half, right = begin.level - begin.slope * half;
    const float lowest = std::min(end.level, begin.level);
    const float tolerance = std::clamp(1.5F * noise / lowest, EchoTolerance, MaxEchoTolerance);
    const auto isNear = [&](float a, float b) {
      return a > 0 && b > 0 && std::abs(std::log(b / a / factor)) <= tolerance;
    };
    return isNear(left, right) || isNear(end.depth, begin.depth);
  }

  const TrackSection& section_;
  std::span<const TrackPoint> points_;
  std::span<const TrackPiece> pieces_;
  std::vector<Link> links_;
  std::vector<float> goesOn_;   // what losing the later pieces that go on with its bed costs
  std::vector<double> inner_;   // what losing the jumps up to a piece costs
  std::vector<double> halved_;  // the same in a stretch of double depths
};

}  // namespace

void FindLost(TrackSection& section, Stretches& stretches) {
  const std::vector<TrackPoint> points = PointsOf(section);
  const std::vector<TrackPiece> pieces = PiecesOf(section, points);
  if (pieces.size() < 2) return;
  const std::vector<bool> kept = Chain(section, points, pieces).Kept();
  for (std::size_t p = 0; p < pieces.size(); ++p) {
    const std::uint32_t first = points[pieces[p].first].at, last = points[pieces[p].last].at;
    stretches.push_back({section.index[first], section.index[last], section.line, !kept[p]});
    if (kept[p]) continue;
    for (std::uint32_t k = pieces[p].first; k <= pieces[p].last; ++k) section.fate[points[k].at] = Fate::Lost;
  }
}

}  // namespace sondrix
