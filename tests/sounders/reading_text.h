#pragma once

#include "sounders/common/reading.h"
#include "sounders/sounder_formats.h"
#include "temporary_folder.h"

#include <cstdio>

namespace sondrix {

// A number with so many decimals, "-" where it is unknown.
inline std::string NumberText(double number, int decimals) {
  if (std::isnan(number)) return "-";
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, number);
  return text;
}

// What a file of that content holds, read by the format that recognises it: longitude, latitude, time and
// depth of each sounding, "/" before one that begins a line, then what was passed over. The reason alone
// where it can't be read.
inline std::string ReadingText(std::string_view content, const ReadOptions& options = {},
                               Reading* kept = nullptr) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("source", content);
  const SounderFormat* format = Recognise(path);
  if (format == nullptr) return "not recognised";
  // cppcheck-suppress unassignedVariable ; through the reference
  Reading own;
  Reading& reading = kept != nullptr ? *kept : own;
  try {
    format->read(path, options, {}, reading);
  } catch (const CantRead& reason) {
    return reason.what();
  }
  std::string text;
  for (const TripReading& trip : reading.trips) {
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
      const Sounding& sounding = trip.soundings[i];
      text.append(text.empty() ? "" : "; ").append(sounding.beginsLine ? "/ " : "");
      text += NumberText(sounding.longitude, 4) + " " + NumberText(sounding.latitude, 4) + " " +
              NumberText(sounding.time, 2) + " " + NumberText(sounding.recorded, 3);
    }
  }
  for (std::size_t i = 0; i < PassedOverCount; ++i)
    if (reading.passedOver[i] > 0)
      text += " | " + std::to_string(reading.passedOver[i]) + " " +
              std::string(NameOf(static_cast<PassedOver>(i)).text);
  return text;
}

}  // namespace sondrix
