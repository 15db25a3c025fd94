#include "sonar/layout/sl_format.h"

#include "core/fault.h"

namespace sondrix {

SlFormat SlFormatOf(std::uint16_t formatWord) {
  if (formatWord > 0xFF) throw Fault(FaultNumber::Overflow);
  const auto word = static_cast<std::uint8_t>(formatWord);
  switch (word) {
    case 2:
      return {word, 0x90, &Sl2Offsets};
    case 1:
      return {word, 0x5E, &Sl3Offsets};
    default:
      return {word, HeaderLength3D, &Sl3Offsets};
  }
}

}  // namespace sondrix
