#include "core/depth_text.h"

#include "core/number_text.h"
#include "core/rounding.h"

namespace sondrix {

std::string Ft2Mt(float feet, float addMetres, int digits, bool toDecimetres) {
  if (feet == 0) return "0";
  const double metres = static_cast<double>(feet) * MetresPerFoot + static_cast<double>(addMetres);
  return NumText(RoundTo(metres, toDecimetres ? 1 : digits));
}

}  // namespace sondrix
