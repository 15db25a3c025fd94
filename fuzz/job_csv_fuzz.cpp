#include "fuzz/fuzz_run.h"

#include <cstring>

// Latitude and longitude of a row of three stand as in the source, so decimal commas between semicolons give
// up to two columns more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  static bool hasSemicolon = false;
  hasSemicolon = size > 0 && std::memchr(data, ';', size) != nullptr;
  return FuzzClick({data, size}, "lake.csv",
                   [](const std::string& stem) { RequireColumns(stem + ".txt", 3, hasSemicolon ? 2 : 0); });
}
