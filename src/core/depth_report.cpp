#include "core/depth_report.h"

#include "core/depth_text.h"
#include "core/fault.h"
#include "core/settings.h"
#include "core/window.h"

namespace sondrix {

std::string Ft2MtOrReport(float feet, float addMetres, int digits, const Settings& settings, Window& window) {
  try {
    return Ft2Mt(feet, addMetres, digits, settings.UseDcm);
  } catch (...) {
    const Fault fault = CaughtFault();
    window.SetAtt("ошибка Ft2Mt " + std::to_string(fault.Number()) + ": " + std::string(fault.Description()),
                  LineKind::Fault);
    return {};
  }
}

}  // namespace sondrix
