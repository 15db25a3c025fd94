#include "survey/levels/levels.h"

#include <cmath>
#include <numbers>

namespace sondrix {

double Levels::Above(std::uint32_t trip, double time) const {
  const TripLevel& level = trips[trip];
  if (!level.isKnown) return Unknown;
  double above = level.constant - zero;
  for (const Constituent& part : tide) {
    const double angle = part.speed * (time - TideEpoch) / 3600 - part.phase;
    above += part.amplitude * std::cos(angle / 180 * std::numbers::pi);
  }
  if (!gauge.Readings().empty()) above += gaugeScale * gauge.At(time);
  return above;
}

std::uint64_t ApplyLevels(Survey& survey, const Levels& levels) {
  std::uint64_t dry = 0;
  for (std::uint32_t t = 0; t < survey.trips.size(); ++t) {
    if (!levels.trips[t].isKnown) continue;
    SoundingList& soundings = survey.trips[t].soundings;
    double time = Unknown;
    for (std::size_t i = 0; i < soundings.size() && std::isnan(time); ++i) time = soundings[i].time;
    for (std::size_t b = 0; b < soundings.BlockCount(); ++b) {
      for (Sounding& sounding : soundings.Block(b)) {
        if (sounding.HasTime()) time = sounding.time;
        if (!(sounding.depth > 0)) continue;
        const double above = levels.Above(t, time);
        if (std::isnan(above)) continue;
        sounding.depth = KeptMetres(static_cast<double>(sounding.depth) - above);
        if (sounding.depth < 0 && sounding.fate == Fate::Used) ++dry;
      }
    }
  }
  return dry;
}

}  // namespace sondrix
