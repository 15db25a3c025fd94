#pragma once

#include "core/fault.h"

namespace sondrix {

// The number of the fault in which an action ends, 0 for none.
int FaultIn(auto&& action) {
  try {
    action();
  } catch (...) {
    return CaughtFault().Number();
  }
  return 0;
}

}  // namespace sondrix
