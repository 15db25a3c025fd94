#pragma once

#include "samples/chart_trip.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sondrix {

// The bytes of the file that a trip left.
std::vector<std::uint8_t> TripBytes(const ChartTrip& trip);

// Writes all trips into a folder, which is made. False when one can't be written.
bool WriteChartTrips(const std::string& folder, std::uint32_t seed = 1);

}  // namespace sondrix
