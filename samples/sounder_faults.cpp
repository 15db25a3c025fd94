#include "samples/sounder_faults.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace sondrix {

namespace {

// A stretch of soundings that fail together.
struct Stretch {
  Trouble What = Trouble::None;
  int Left = 0;
  double Factor = 1, Add = 0;  // of the depth
};

// step: metres from sounding to sounding.
Stretch BeginLost(double depth, double step, XorShift& random) {
  constexpr double longest = 300;  // metres
  Stretch stretch;
  stretch.What = Trouble::Lost;
  // 5 to 300 soundings, short ones as often as long ones.
  const double count = std::min(5 * std::pow(60, (random.Signed() + 1) / 2), longest / step);
  stretch.Left = std::max(5, static_cast<int>(count));
  switch (random.Below(3)) {
    case 0:
      stretch.Factor = 0.5;
      break;
    case 1:
      stretch.Factor = 2;
      break;
    default:
      stretch.Add = depth > 9 && random.Below(2) == 0 ? -8 : 8;
  }
  return stretch;
}

double SpikeOf(double depth, XorShift& random) {
  const double off = std::max(1.0, 0.3 * depth) * (1 + (random.Signed() + 1) / 2);
  return random.Below(2) == 0 && depth > off + 0.3 ? depth - off : depth + off;
}

}  // namespace

void FailSounder(const SounderFaults& faults, double secondsBetween, std::vector<TrueSounding>& soundings,
                 XorShift& random) {
  constexpr int soundBetween = 40;  // soundings after a stretch
  Stretch stretch;
  int sound = 0;
  for (TrueSounding& sounding : soundings) {
    ++sound;
    // Elsewhere it looks for the bottom anew.
    if (sounding.At.BeginsLine) stretch.Left = 0;
    if (sounding.What != Trouble::None && stretch.Left == 0) continue;
    const double way = sounding.At.Speed * secondsBetween;
    if (stretch.Left == 0 && sound > soundBetween && faults.LostEvery > 0 &&
        random.Signed() + 1 < 2 * way / faults.LostEvery) {
      stretch = BeginLost(sounding.Depth(), way, random);
      if (random.Below(3) == 0) {
        stretch = {Trouble::Blind, 8 + static_cast<int>(random.Below(60)), 0, faults.Smallest};
      }
    }
    if (stretch.Left > 0) {
      sounding.Told = sounding.Told * stretch.Factor + stretch.Add;
      if (sounding.What == Trouble::None || sounding.What == Trouble::Weed) sounding.What = stretch.What;
      --stretch.Left;
      sound = 0;
    } else if (sound > 3 && random.Below(1000) < static_cast<std::uint32_t>(faults.SpikesPerMille)) {
      sounding.Told = SpikeOf(sounding.Told, random);
      sounding.What = Trouble::Spike;
      sound = 0;
    }
  }
}

}  // namespace sondrix
