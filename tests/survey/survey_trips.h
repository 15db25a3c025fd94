#pragma once

#include "samples/chart_lake.h"
#include "samples/chart_trip.h"
#include "survey/survey.h"

#include <numbers>
#include <utility>

namespace sondrix {

// A trip of soundings that are made one by one.
inline Trip MadeTrip(std::string path, std::string kind, std::size_t count,
                     const std::function<Sounding(std::size_t index)>& make) {
  Trip trip;
  trip.name = path.substr(path.rfind('/') + 1);
  trip.path = std::move(path);
  trip.kind = std::move(kind);
  for (std::size_t i = 0; i < count; ++i) {
    Sounding sounding = make(i);
    sounding.longitude = KeptDegrees(sounding.longitude);
    sounding.latitude = KeptDegrees(sounding.latitude);
    sounding.depth = sounding.recorded = KeptMetres(sounding.recorded);
    trip.soundings.Add(sounding);
  }
  trip.soundings.Finish();
  return trip;
}

// A sounding at a place of the made lake's plane.
inline Sounding SoundingAt(double x, double y, double time, double depth) {
  Sounding sounding;
  const GlobePlace place = ChartLakeGlobe(x, y);
  sounding.longitude = place.Lon;
  sounding.latitude = place.Lat;
  sounding.time = time;
  sounding.recorded = static_cast<float>(depth);
  return sounding;
}

// A recording as a reader gives it that mends the track between the fixes.
inline Trip RecordedTrip(const ChartTrip& made) {
  const std::vector<TrueSounding>& all = made.Soundings;
  std::size_t from = 0, to = 0;  // where the fix changed and where it will
  return MadeTrip(made.File, "SL2", all.size(), [&](std::size_t i) {
    if (i >= to) {
      from = to;
      while (to < all.size() && all[to].FixX == all[i].FixX) ++to;
      if (to == from) ++to;
    }
    const TrueSounding& a = all[i];
    const TrueSounding& b = all[std::min(to, all.size() - 1)];
    const double part =
        static_cast<double>(i - from) / static_cast<double>(std::max<std::size_t>(1, to - from));
    const bool isNear = std::hypot(b.FixX - a.FixX, b.FixY - a.FixY) < 10;
    const double x = a.FixX + (isNear ? part * (b.FixX - a.FixX) : 0);
    const double y = a.FixY + (isNear ? part * (b.FixY - a.FixY) : 0);
    return std::isnan(x) ? Sounding{} : SoundingAt(x, y, static_cast<double>(made.Start) + a.At.Time, a.Told);
  });
}

// The converter's table of a recording as a reader gives it: whole Mercator metres, centimetres, seconds.
inline Trip ConvertedTrip(const ChartTrip& made) {
  return MadeTrip(made.File, "table", made.Soundings.size(), [&](std::size_t i) {
    constexpr double radius = 6356752.31424518, pi = std::numbers::pi;
    const TrueSounding& at = made.Soundings[i];
    const RecorderPlace place = RecorderPlaceOf(at);
    Sounding sounding;
    sounding.longitude = place.X / radius * 180 / pi;
    sounding.latitude = (2 * std::atan(std::exp(place.Y / radius)) - pi / 2) * 180 / pi;
    sounding.time = std::floor(static_cast<double>(made.Start) + at.At.Time);
    sounding.recorded = static_cast<float>(std::round(at.Told * 100) / 100);
    return sounding;
  });
}

// The soundings of a trip changed one by one, under another name.
inline Trip ChangedTrip(const Trip& trip, std::string path, std::string kind,
                        const std::function<void(Sounding& sounding)>& change, std::size_t every = 1) {
  return MadeTrip(std::move(path), std::move(kind), trip.soundings.size() / every, [&](std::size_t i) {
    Sounding sounding = trip.soundings[i * every];
    change(sounding);
    return sounding;
  });
}

}  // namespace sondrix
