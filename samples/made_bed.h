#pragma once

#include "samples/xorshift.h"

#include <vector>

// Beds and shores drawn from a few numbers, on a plane of their own: u metres along a water, v across it.

namespace sondrix {

// A closed shore around a middle, about an ellipse.
class MadeShore {
 public:
  MadeShore(double middleU, double middleV, double length, double width, double ragged, XorShift& random);

  // Metres from the shore, measured from the middle; negative on land.
  double Off(double atU, double atV) const;

  double u, v, halfLength, halfWidth;  // metres

 private:
  struct Swing {
    double count, size, phase;
  };
  std::vector<Swing> swings_;
};

// What a bed is made of; metres unless told. A part whose size is 0 is left out.
struct BedKind {
  double base = 8;    // depth
  double shore = 30;  // the way in which the depth grows to two thirds of what lies off the shore

  // Round shoals and holes of either sign.
  int mounds = 0;
  double moundHeight = 0, moundWidth = 0;  // the largest; the smallest are a third of it

  // Waves of all lengths, whose height grows with the length to the power of hurst: a fractal bed.
  double waves = 0;  // root mean square
  double hurst = 0.8, shortest = 5, longest = 800;
  double spread = 3.1416;  // of their directions about that of u, radians

  // The bed of an old river along u: how much deeper, half the width of its floor, the length of its walls.
  double channel = 0, channelHalf = 0, channelWall = 0, meander = 0;

  double steps = 0;  // height of terraces
};

class MadeBed {
 public:
  MadeBed(const BedKind& kind, double halfLength, double halfWidth, XorShift& random);

  // Depth so many metres off the shore.
  double Depth(double u, double v, double off) const;

 private:
  struct Mound {
    double u, v, height, width;
  };
  struct Wave {
    double ku, kv, height, phase;  // radians a metre, metres, radians
  };
  double ChannelAt(double u, double v) const;

  BedKind kind_;
  double meanderLength_, meanderPhase_;
  std::vector<Mound> mounds_;
  std::vector<Wave> waves_;
};

}  // namespace sondrix
