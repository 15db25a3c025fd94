#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  return FuzzClick({data, size}, "lake.log",
                   [](const std::string& stem) { RequireColumns(stem + ".srf.txt", 3); });
}
