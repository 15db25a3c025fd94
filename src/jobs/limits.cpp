#include "jobs/limits.h"

#include "core/fault.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/settings.h"
#include "geo/angles.h"
#include "geo/constants.h"

#include <cmath>

namespace sondrix {
namespace {

constexpr double CentimetresPerMetre = 100;

float Width32(double value) {
  const auto narrow = static_cast<float>(value);
  Finite(narrow);
  return narrow;
}

float Metres(std::string_view text) { return Width32(NumberOf(text)); }
float Centimetres(std::string_view text) { return Width32(NumberOf(text) / CentimetresPerMetre); }

}  // namespace

RunLimits LimitsOf(const Settings& settings) {
  RunLimits limits;
  if (!settings.DepthSm.empty()) {
    limits.DepthAddM = Width32(LocParse(settings.DepthSm) / CentimetresPerMetre);
  }
  limits.DepthStepM = Centimetres(settings.DepthDiff);
  limits.MinDistM = Metres(settings.DistDiff);
  limits.MaxDistM = Metres(settings.MaxDiff);
  limits.SideLimitM = Metres(settings.MaxSide);
  limits.SidePercent = ToWhole16(NumberOf(settings.MaxProc));
  limits.MaxTurnRad = Width32(NumberOf(settings.MaxGrad) * Pi / 180);
  limits.DucerXM = Centimetres(settings.DucerX);
  limits.DucerYM = Centimetres(settings.DucerY);
  if (limits.DucerXM != 0 || limits.DucerYM != 0) {
    const double x = limits.DucerXM;
    const double y = limits.DucerYM;
    limits.DucerDist = Finite(std::sqrt(x * x + y * y));
    limits.DucerAngle = Atan2(x, y);
  }
  return limits;
}

}  // namespace sondrix
