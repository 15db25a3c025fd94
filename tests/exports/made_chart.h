#pragma once

#include "exports/chart_data.h"

#include <cmath>
#include <limits>
#include <utility>

namespace sondrix {

// A pool of cells of a metre in zone 37, deeper to its middle, with rings at its depths and two areas;
// outside there is nothing.
struct MadeChart {
  DepthModel model;
  Contours contours;
  ChartData data;

  explicit MadeChart(int size = 700) {
    model.shape = {400000, 6160000, 1, size, size};
    for (int row = 0; row < size; ++row) {
      for (int column = 0; column < size; ++column) {
        const double from = std::hypot(column - size / 2, row - size / 2) / size;
        const bool isWater = from < 0.4;
        constexpr float none = std::numeric_limits<float>::quiet_NaN();
        model.depth.push_back(isWater ? static_cast<float>(10 - 20 * from) : none);
        model.uncertainty.push_back(isWater ? static_cast<float>(0.1 + from) : none);
      }
    }
    const PlaneLine outer = Ring(0.4 * size), inner = Ring(0.2 * size);
    contours.lines = {{2.5, false, true, outer}, {5, true, true, inner}};
    contours.areas = {{2.5, 5, {outer, {inner.rbegin(), inner.rend()}}}, {5, 10, {inner}}};
    data = {&model, &contours, "EPSG:32637", false, 1621063742};
  }
  MadeChart(const MadeChart&) = delete;
  MadeChart& operator=(const MadeChart&) = delete;

 private:
  PlaneLine Ring(double radius) const {
    constexpr int points = 60;
    PlaneLine ring;
    for (int i = 0; i <= points; ++i) {
      const double angle = 2 * M_PI * (i % points) / points;
      const double middle = model.shape.columns / 2.0;
      ring.push_back({model.shape.west + middle + radius * std::cos(angle),
                      model.shape.north - middle + radius * std::sin(angle)});
    }
    return ring;
  }
};

}  // namespace sondrix
