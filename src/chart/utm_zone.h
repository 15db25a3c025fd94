#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace sondrix {

// Finds the zone of Universal Transverse Mercator in which most soundings lie; without the exceptions of the
// zone grid at Norway and Svalbard. Beyond 84 degrees north and 80 degrees south it is the zone of Universal
// Polar Stereographic.
class UtmZoneCount {
 public:
  void Add(double longitude, double latitude);  // degrees
  // "EPSG:32637", WGS 84; of two zones with as many soundings that of the smaller number. Empty where there
  // is no sounding.
  std::string Crs() const;

 private:
  static constexpr std::size_t Zones = 61;  // the last one is the pole's
  std::array<std::uint64_t, Zones> north_{}, south_{};
};

}  // namespace sondrix
