#pragma once

#include "fuzz/fuzz_run.h"
#include "sounders/common/reading.h"
#include "sounders/sounder_formats.h"

#include <cmath>

namespace sondrix {

// Reads the input with a reader, whether it recognises it or not, and looks at what it gives: numbers that a
// sounding may keep, and no more soundings than bytes.
inline int ReadInput(FuzzBytes input, bool (*recognises)(const SourceHead&),
                     decltype(SounderFormat::read) read) {
  const std::string path = Folder().Of("source");
  OutputFile file(path);
  file.Write(input);
  file.Close();
  recognises({input, static_cast<std::int64_t>(input.size())});
  Reading reading;
  try {
    read(path, {}, {}, reading);
  } catch (const CantRead& reason) {
    Require(*reason.what() != '\0', "there is a reason");
    return 0;
  }
  std::size_t count = 0;
  for (const TripReading& trip : reading.trips) {
    count += trip.soundings.size();
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
      const Sounding& sounding = trip.soundings[i];
      Require(std::isnan(sounding.longitude) == std::isnan(sounding.latitude), "a place is whole");
      Require(!(std::abs(sounding.longitude) > 180) && !(std::abs(sounding.latitude) > 90),
              "a place is on the earth");
      Require(!std::isinf(sounding.time) && !std::isinf(sounding.recorded), "numbers are finite");
      Require(!(sounding.time < -1e11) && !(sounding.time > 1e12), "a time has a date");
      Require(
          std::isnan(sounding.recorded) ? std::isnan(sounding.depth) : sounding.depth == sounding.recorded,
          "the depth is the recorded one");
    }
  }
  Require(count <= input.size(), "every sounding stands in the source");
  return 0;
}

}  // namespace sondrix
