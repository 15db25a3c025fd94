#pragma once

#include "chart/contours.h"
#include "chart/depth_model.h"

#include <string>

namespace sondrix {

// What is exported besides the survey. A chart that couldn't be made has neither model nor contours.
struct ChartData {
  const DepthModel* model = nullptr;
  const Contours* contours = nullptr;  // their depths as they are to be written, metres or feet
  std::string crs = {};                // EPSG:n, of both
  bool isZUp = false;                  // rasters hold heights, the depths with the other sign
  double date = 0;                     // what a file says of its last change, seconds since 1970 UTC
};

}  // namespace sondrix
