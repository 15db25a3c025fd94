#pragma once

#include <functional>
#include <stdexcept>

namespace sondrix {

// From one pair of coordinates to another, x before y; false where there is no such place. Not for several
// threads at a time.
using Transform = std::function<bool(double fromX, double fromY, double& x, double& y)>;

// Why coordinates can't be reckoned, in words for a line.
class CantProject : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sondrix
