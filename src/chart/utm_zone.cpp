#include "chart/utm_zone.h"

#include <algorithm>
#include <cmath>

namespace sondrix {

void UtmZoneCount::Add(double longitude, double latitude) {
  constexpr double zoneWidth = 6, northEnd = 84, southEnd = -80;  // degrees
  const double zone = std::floor((longitude + 180) / zoneWidth);
  const bool isPolar = latitude >= northEnd || latitude < southEnd;
  const auto index =
      isPolar ? Zones - 1 : static_cast<std::size_t>(std::clamp(zone, 0.0, static_cast<double>(Zones - 2)));
  if (latitude < 0) {
    ++south_[index];
  } else {
    ++north_[index];
  }
}

std::string UtmZoneCount::Crs() const {
  constexpr std::size_t firstNorth = 32601, firstSouth = 32701;  // and behind the last zone the pole's
  const auto north = std::max_element(north_.begin(), north_.end());
  const auto south = std::max_element(south_.begin(), south_.end());
  if (*north == 0 && *south == 0) return {};
  const std::size_t code = *north >= *south ? firstNorth + static_cast<std::size_t>(north - north_.begin())
                                            : firstSouth + static_cast<std::size_t>(south - south_.begin());
  return "EPSG:" + std::to_string(code);
}

}  // namespace sondrix
