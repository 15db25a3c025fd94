#include "core/messages.h"
#include "core/number_text.h"
#include "core/outputs.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"
#include "formats/wpt.h"
#include "ozi/ozi_link.h"
#include "sonar/layout/sl_frame.h"
#include "sonar/track_point.h"

#include <cmath>

namespace sondrix {
namespace {

// Frames between two points of the live track, by the recorded speed: the faster, the closer in time.
constexpr float SlowStep = 200, MiddleStep = 100, FastStep = 50;
constexpr float SlowSpeed = 3, MiddleSpeed = 6;

double PointDate(const PointInput& input) {
  return DayCount(input.RunDate + ToWhole(input.frame.TimeOffset / 1000.0));
}

}  // namespace

void OziTrackStep(Run& run, TrackState& track, const PointInput& input) {
  if (track.OziStep == 0) track.OziStep = SlowStep;
  if (std::fmod(input.FrameCounter, track.OziStep) != 0) return;
  const float speed = input.frame.Speed;
  track.OziStep = speed < SlowSpeed ? SlowStep : speed < MiddleSpeed ? MiddleStep : FastStep;
  const double altitude = RoundTo(input.frame.WaterDepth, 1);
  const double lat = track.fix.TrackLat;
  const double lon = track.fix.TrackLon;
  run.link.CreateTrackPoint(1, track.TrackStart, lat, lon, altitude, PointDate(input));
  run.link.CenterMapAtPositionWithMark(lat, lon);
  if (track.TrackStart != 1) return;
  track.TrackStart = 0;
  if (run.link.IsPositionOnMap(lat, lon) != 0) return;
  run.window.Inform(run.messages.MsgLoadMap, run.messages.MsgOffMap);
  run.link.FindMapAtPosition(lat, lon);
}

void MarkStep(Run& run, TrackState& track, const PointInput& input) {
  const WaypointKind& kind = run.state.MarkRequest == MarkFish ? FishWaypoint : ReliefWaypoint;
  const std::int32_t frameIndex = input.frame.FrameIndex;
  const std::string depth = LocText(input.DepthM);
  if (run.settings.ViewOzi) {
    OziWaypoint waypoint;
    waypoint.name = depth;
    waypoint.symbol = kind.symbol;
    waypoint.latitude = track.fix.TrackLat;
    waypoint.longitude = track.fix.TrackLon;
    waypoint.altitude = input.DepthM;
    waypoint.date = PointDate(input);
    waypoint.direction = kind.direction;
    waypoint.colour = kind.colour;
    waypoint.description = "#" + std::to_string(frameIndex) + " ";
    waypoint.description.append(run.window.Spd());
    track.LastWpNumber = run.link.CreateWp(waypoint);
  }
  AppendWaypoint(run.state.WaypointText, kind,
                 {.number = track.LastWpNumber,
                  .name = depth,
                  .latitude = NumText(track.fix.TrackLat),
                  .longitude = NumText(track.fix.TrackLon),
                  .frameIndex = frameIndex,
                  .speed = run.window.Spd()});
  SaveGraph(run.pictures, run.outputs, run.settings.TargetPath + std::to_string(frameIndex) + ".bmp");
  run.state.MarkRequest = 0;
}

void WriteWaypointFile(Run& run) {
  std::string& text = run.state.WaypointText;
  if (text.empty()) return;
  text.insert(0, WptHead());
  run.outputs.WriteF(run.settings.TargetPath + run.settings.TargetName + "_usr.wpt", text, run.window);
}

}  // namespace sondrix
