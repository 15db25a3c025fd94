#include "core/depth_text.h"

#include "core/fault.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/settings.h"
#include "core/window.h"

namespace sondrix {

std::string Ft2Mt(float feet, float addMetres, int digits, const Settings& settings, Window& window) {
  try {
    if (feet == 0) return "0";
    const double metres = static_cast<double>(feet) * MetresPerFoot + static_cast<double>(addMetres);
    return NumText(RoundTo(metres, settings.UseDcm ? 1 : digits));
  } catch (...) {
    const Fault fault = CaughtFault();
    window.SetAtt("ошибка Ft2Mt " + std::to_string(fault.Number()) + ": " + std::string(fault.Description()));
    return {};
  }
}

}  // namespace sondrix
