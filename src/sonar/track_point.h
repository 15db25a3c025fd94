#pragma once

#include "core/date_time.h"
#include "core/fix.h"

#include <cstdint>
#include <string>

namespace sondrix {

struct Run;
struct SlFrame;

// What a frame's point is made from, beside its fields.
struct PointInput {
  const SlFrame& frame;
  float DepthM = 0;         // metres
  DateSeconds RunDate = 0;  // start of the recording
  std::int32_t FrameCounter = 0;
};

// What lives from frame to frame of a run.
struct TrackState {
  Fix fix;  // of the last point; its StampText is that of the current frame
  float LastMercX = 0, LastMercY = 0;
  float LastCourse = 0, LastHeading = 0;
  float OziStep = 0;  // frames between two points of the live track
  std::int32_t TrackStart = 0;
  std::int32_t LastWpNumber = 0;
};

// The point of an accepted frame: filters it by distance, follows the boat's direction, works out the
// transducer's position, adds the CSV line, and serves the live track and a requested mark. A frame that is
// kept out leaves the state of the last point.
void TrackPointOf(Run& run, TrackState& track, const PointInput& input, std::string& csvBuffer);

// The live track and the marks, called by TrackPointOf for a point with a depth.
void OziTrackStep(Run& run, TrackState& track, const PointInput& input);
void MarkStep(Run& run, TrackState& track, const PointInput& input);

// Writes the marks of the run, if there are any, to the target's "_usr.wpt".
void WriteWaypointFile(Run& run);

}  // namespace sondrix
