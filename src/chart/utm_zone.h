#pragma once

#include "core/sounding.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace sondrix {

// Finds the zone of Universal Transverse Mercator in which most soundings lie; without the exceptions of the
// zone grid at Norway and Svalbard.
class UtmZoneCount {
 public:
  // Those used count.
  void Add(std::span<const Sounding> soundings);
  // "EPSG:32637", WGS 84; of two zones with as many soundings that of the smaller number. Empty where no
  // sounding was used.
  std::string Crs() const;

 private:
  static constexpr std::size_t Zones = 60;
  std::array<std::uint64_t, Zones> north_{}, south_{};
};

}  // namespace sondrix
