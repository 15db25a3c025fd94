#include "chart/utm_zone.h"

#include <algorithm>
#include <cmath>

namespace sondrix {

void UtmZoneCount::Add(std::span<const Sounding> soundings) {
  constexpr double zoneWidth = 6;  // degrees
  for (const Sounding& sounding : soundings) {
    if (sounding.fate != Fate::Used || !sounding.HasPosition()) continue;
    const double zone = std::floor((sounding.longitude + 180) / zoneWidth);
    const auto index = static_cast<std::size_t>(std::clamp(zone, 0.0, static_cast<double>(Zones - 1)));
    if (sounding.latitude < 0) {
      ++south_[index];
    } else {
      ++north_[index];
    }
  }
}

std::string UtmZoneCount::Crs() const {
  constexpr std::size_t firstNorth = 32601, firstSouth = 32701;
  const auto north = std::max_element(north_.begin(), north_.end());
  const auto south = std::max_element(south_.begin(), south_.end());
  if (*north == 0 && *south == 0) return {};
  const std::size_t code = *north >= *south ? firstNorth + static_cast<std::size_t>(north - north_.begin())
                                            : firstSouth + static_cast<std::size_t>(south - south_.begin());
  return "EPSG:" + std::to_string(code);
}

}  // namespace sondrix
