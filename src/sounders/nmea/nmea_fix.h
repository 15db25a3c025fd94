#pragma once

#include "core/sounding.h"
#include "sounders/nmea/nmea_sentence.h"

#include <optional>

namespace sondrix {

// What a sentence of a GPS tells.
struct NmeaFix {
  double longitude = Unknown, latitude = Unknown;  // degrees, WGS84; not a number: none, or no measurement
  double ofDay = Unknown;                          // seconds of the day, UTC
  std::optional<int> day = {};                     // since 1970
  int decimals = 0;                                // of the minutes of latitude

  bool HasPosition() const { return latitude == latitude; }
};

// Of a sentence of a fix kind; none where it can't be understood. A position counts where its status says
// that it is measured, and not at 0, 0. A date of RMC counts with its position only, for receivers invent one
// before they have a fix.
std::optional<NmeaFix> FixOf(SentenceKind kind, const NmeaFields& fields);

}  // namespace sondrix
