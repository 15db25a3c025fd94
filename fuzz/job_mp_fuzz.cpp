#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return sondrix::FuzzClick({data, size}, "lake.mp");
}
