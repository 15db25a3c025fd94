#pragma once

#include "chart/contours.h"

#include <span>
#include <string>

namespace sondrix {

// How QGIS draws the layers of a GeoPackage: documents of its style language (QML, of version 3).

// Small dots, coloured by fate.
std::string SoundingStyle();
// Thin lines.
std::string TrackStyle();
// Thin lines, those of the index heavier and with their depths.
std::string ContourStyle();
// Each depth between contours in a blue, the deeper the darker.
std::string AreaStyle(std::span<const DepthArea> areas);

}  // namespace sondrix
