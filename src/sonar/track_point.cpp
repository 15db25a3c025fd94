#include "sonar/track_point.h"

#include "core/messages.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/sounding.h"
#include "echo/views.h"
#include "geo/mercator.h"
#include "geo/vincenty.h"
#include "sonar/layout/sl_frame.h"

#include <cmath>

namespace sondrix {
namespace {

constexpr double KmhFactor = 1.609344;
constexpr int PositionDigits = 9;

void ShowSpeed(Run& run, float speed) {
  std::string text = NumText(std::floor(Finite(speed * KmhFactor * 10)) / 10);
  run.window.SetSpd(text.append(run.messages.WordKmh));
}

bool WithinMinDist(const Run& run, const TrackState& track, const SlFrame& frame) {
  const double dx = std::abs(static_cast<double>(frame.MercX) - track.LastMercX);
  const double dy = std::abs(static_cast<double>(frame.MercY) - track.LastMercY);
  const auto distStep = static_cast<float>(std::sqrt(dx * dx + dy * dy));
  return run.limits.MinDistM != 0 && distStep <= run.limits.MinDistM;
}

// An angle of 0 is absent. Sets the turn flags from a change and keeps the new value.
void FollowAngle(Run& run, Fix& fix, float angle, float& last, Picture& needle, Colour colour) {
  if (angle == 0 || angle == last) return;
  if (run.settings.MakeGraf) DrawNeedle(needle, angle, colour);
  const double change = Finite(static_cast<double>(angle) - last);
  const float limit = run.limits.MaxTurnRad;
  fix.TurnExceeded = std::abs(change) > limit && last != 0 && limit != 0;
  if (change != 0) fix.TurnUp = change > 0;
  last = angle;
}

void PlaceTransducer(const Run& run, Fix& fix, const SlFrame& frame) {
  LatLon place = {MercY2Lat(frame.MercY, PositionDigits), MercX2Lon(frame.MercX, PositionDigits)};
  if (run.limits.DucerDist > 0) {
    place = DestPoint(place.Lat, place.Lon, fix.BoatAngle + run.limits.DucerAngle, run.limits.DucerDist,
                      PositionDigits);
  }
  fix.TrackLat = place.Lat;
  fix.TrackLon = place.Lon;
}

}  // namespace

void TrackPointOf(Run& run, TrackState& track, const PointInput& input, std::string& csvBuffer) {
  const SlFrame& frame = input.frame;
  Fix& fix = track.fix;
  if (run.settings.MakeGraf) ShowSpeed(run, frame.Speed);
  if (WithinMinDist(run, track, frame)) return;
  FollowAngle(run, fix, frame.Course, track.LastCourse, run.pictures.CRS, Black);
  FollowAngle(run, fix, frame.Heading, track.LastHeading, run.pictures.HED, Blue);
  fix.HasDepth = input.DepthM != 0;
  if (!fix.HasDepth) return;
  track.LastMercX = static_cast<float>(frame.MercX);
  track.LastMercY = static_cast<float>(frame.MercY);
  fix.BoatAngle = run.settings.UseHead ? frame.Heading : frame.Course;
  PlaceTransducer(run, fix, frame);
  if (!Is3D(run.state.SelectedChannel)) {
    AddSounding(run.settings, fix.TrackLat, fix.TrackLon, NumText(input.DepthM), fix.StampText, csvBuffer);
  }
  if (run.settings.ViewOzi) OziTrackStep(run, track, input);
  run.window.Pump();
  if (run.state.MarkRequest != 0) MarkStep(run, track, input);
}

}  // namespace sondrix
