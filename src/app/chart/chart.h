#pragma once

#include <span>
#include <string>

namespace sondrix {

// What sondrix-chart does with the arguments behind its name; returns its exit status.
int RunChart(std::span<const std::string> arguments);

}  // namespace sondrix
