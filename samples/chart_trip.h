#pragma once

#include "samples/chart_way.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

// Trips over the charted lake by several boats, sounders and days, with the truth of each sounding kept.

namespace sondrix {

// What went wrong with a sounding.
enum class Trouble : std::uint8_t {
  None,
  Spike,   // alone off the bed
  Lost,    // in a stretch at half or twice the depth or 8 m off
  Blind,   // no depth, or the smallest that the sounder tells
  Weed,    // the top of the weed, which no judge can tell from the bed for certain
  NoFix,   // and none near enough in time
  Jump,    // the fix is hundreds of metres off for some seconds
  Repeat,  // the row before it said the same; every row of a source that repeats another
};

struct TrueSounding {
  WayPoint At;                                      // the time counts from the start of the trip
  double Bed = 0, Level = 0;                        // metres, of the bed below and of the water above level 0
  double Told = 0;                                  // metres, before the rounding of the form
  double FixX = std::nan(""), FixY = std::nan("");  // as the receiver told it on the plane, metres
  Trouble What = Trouble::None;
  // What a sound instrument would have told but for its noise, metres.
  double Depth() const { return Bed + Level; }
};

enum class TripForm : std::uint8_t {
  Sl2,             // Primary and Downscan, both with depths
  Sl3,             // Primary and Downscan, of which the second has none
  NmeaLog,         // RMC, GGA and DBT
  AppTable,        // of a float that is towed: no head, most rows at 0,0
  FeetTable,       // with a head, date and time apart
  Gpx,             // depths in extensions of track points
  ConverterTable,  // as the converter writes it: whole Mercator metres at least 1 apart
};

struct ChartTrip {
  std::string File;
  TripForm Form = TripForm::Sl2;
  std::int64_t Start = 0;  // seconds since 1970 UTC
  std::string GoesOn;      // the file of which this is the next part; empty where of none
  std::string Copies;      // the file whose soundings this repeats; empty where of none
  // One for each frame of a channel, depth sentence, row or point, in the order of the file.
  std::vector<TrueSounding> Soundings;
};

// The same for the same seed.
std::vector<ChartTrip> ChartTrips(std::uint32_t seed = 1);

// A recorder's position: whole metres of its Mercator sphere. 0, 0 where there is no fix.
struct RecorderPlace {
  std::int32_t X = 0, Y = 0;
};
RecorderPlace RecorderPlaceOf(const TrueSounding& sounding);

}  // namespace sondrix
