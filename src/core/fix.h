#pragma once

#include <string>

namespace sondrix {

// Where a frame was taken, as its track point left it. A frame that yields no point keeps the last one.
struct Fix {
  double TrackLat = 0;   // degrees north, of the transducer
  double TrackLon = 0;   // degrees east
  double BoatAngle = 0;  // radians clockwise from north
  std::string StampText;
  bool HasDepth = false;
  bool TurnExceeded = false;  // the direction changed by more than the limit
  bool TurnUp = false;        // to the right
};

}  // namespace sondrix
