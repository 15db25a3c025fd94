#include "core/fault.h"
#include "fuzz/fuzz_run.h"
#include "geo/nmea.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  try {
    const double degrees = Nmea2Deg(TextOf({data, size}));
    Require(std::isfinite(degrees), "degrees are finite", TextOf({data, size}));
    Require(size == 9 || size == 10 || degrees == 0, "other lengths are 0");
  } catch (const Fault& fault) {
    Require(fault.Number() == 5 || fault.Number() == 6, "the fault of a coordinate", TextOf({data, size}));
  }
  return 0;
}
