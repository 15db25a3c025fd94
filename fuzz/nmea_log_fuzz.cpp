#include "fuzz/read_source.h"
#include "sounders/nmea/nmea_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace sondrix;
  return ReadInput({data, size}, IsNmeaLog, ReadNmeaLog);
}
