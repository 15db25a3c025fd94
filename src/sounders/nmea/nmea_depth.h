#pragma once

#include "sounders/nmea/nmea_sentence.h"

#include <optional>

namespace sondrix {

// What a depth sentence tells.
struct ToldDepth {
  double metres = 0;           // positive down; not a number: the sounder told that it has none
  bool isFromSurface = false;  // else from the transducer or the keel
  // The position of a sentence that has one, degrees; not a number: none, or without a fix.
  double longitude = 0, latitude = 0;
};

// The depth, or not a number where it is one of those that sounders tell when they have no bottom, or none
// that there is on earth.
double DepthOrNone(double metres);

// Of a sentence of a depth kind; none where it can't be understood. From DPT the offset is added where it is
// the way from the transducer up to the water; one down to the keel changes nothing.
std::optional<ToldDepth> DepthOf(SentenceKind kind, const NmeaFields& fields);

}  // namespace sondrix
