#include "fuzz/fuzz_run.h"

// The first byte chooses the extension, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  const bool isShort = size > 0 && data[0] % 2 != 0;
  return FuzzClick({data, size}, isShort ? "lake.sl3" : "lake.sl2",
                   [](const std::string& stem) { RequireColumns(stem + ".csv", 4); });
}
