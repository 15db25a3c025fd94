#pragma once

#include "app/chart/chart.h"
#include "call.h"

namespace sondrix {

inline Called Call(const std::string& line) {
  return CallWith(line, [](const std::vector<std::string>& arguments) {
    return RunChart(arguments, std::vector<std::string>{GIS_FOLDER});
  });
}

}  // namespace sondrix
