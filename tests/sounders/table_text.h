#pragma once

#include "sounders/sounder_formats.h"
#include "sounders/table/table_sounder.h"
#include "temporary_folder.h"

#include <cstdio>

namespace sondrix {

// What became of a table given as text.
struct TableText {
  // "latitude longitude depth time", with "|" behind each and "-" for what is unknown; a trip's name and ":"
  // in front of its first.
  std::string soundings;
  std::string takenFor, remarks, refusal;  // sentences, with "|" behind each
  std::uint64_t badRows = 0, cutRows = 0;
};

inline std::string NumberText(double value) {
  if (std::isnan(value)) return "-";
  char text[40];
  std::snprintf(text, sizeof text, "%.14g", value);
  return text;
}

inline std::string SoundingText(const Sounding& sounding) {
  return NumberText(sounding.latitude) + " " + NumberText(sounding.longitude) + " " +
         NumberText(std::round(sounding.recorded * 1e3) / 1e3) + " " + NumberText(sounding.time);
}

inline bool IsTableText(std::string_view text) {
  const std::string_view start = text.substr(0, SourceHead::MaxBytes);
  return IsTable({{reinterpret_cast<const std::uint8_t*>(start.data()), start.size()},
                  static_cast<std::int64_t>(text.size())});
}

inline Reading ReadTableText(std::string_view text, const ReadOptions& options = {}) {
  const TemporaryFolder folder;
  Reading reading;
  ReadTable(folder.Write("table", text), options, {}, reading);
  return reading;
}

inline TableText TableOf(std::string_view text, const ReadOptions& options = {}) {
  TableText result;
  EXPECT_TRUE(IsTableText(text)) << text.substr(0, 200);
  try {
    const Reading reading = ReadTableText(text, options);
    for (const TripReading& trip : reading.trips) {
      if (!trip.name.empty()) result.soundings += trip.name + ":";
      for (std::size_t i = 0; i < trip.soundings.size(); ++i)
        result.soundings += SoundingText(trip.soundings[i]) + "|";
    }
    for (const std::string& taken : reading.takenFor) result.takenFor += taken + "|";
    for (const std::string& remark : reading.remarks) result.remarks += remark + "|";
    result.badRows = reading.passedOver[static_cast<std::size_t>(PassedOver::BadRows)];
    result.cutRows = reading.passedOver[static_cast<std::size_t>(PassedOver::CutEnd)];
  } catch (const CantRead& reason) {
    result.refusal = reason.what();
  }
  return result;
}

}  // namespace sondrix
