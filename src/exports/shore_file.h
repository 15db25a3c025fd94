#pragma once

#include "chart/shore.h"

#include <functional>
#include <string>

namespace sondrix {

// Metres in the chart's projection.
struct PlaneBox {
  double west = 0, south = 0, east = 0, north = 0;
};

// Lines and areas of all layers of a vector file that touch the box, in the chart's projection (EPSG:n). What
// lies further from the box than it is long may be cut off, so that a coast of the whole world is read as
// far as it matters. Coordinates of no known system are taken for degrees (WGS 84) if they can be some.
// CantExport in words that follow the file's name: it can't be read, or has no line or area there; EndAsked.
Shore ReadShore(const std::string& path, const std::string& crs, const PlaneBox& box,
                const std::function<bool()>& isToEnd);

}  // namespace sondrix
