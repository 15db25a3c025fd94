#include "echo/points_3d.h"

#include "core/depth_report.h"
#include "core/fault.h"
#include "core/fix.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/settings.h"
#include "echo/sounding.h"
#include "echo/views.h"
#include "geo/constants.h"
#include "geo/vincenty.h"

namespace sondrix {
namespace {

// The scale of the 3D view: 60 feet span 256 units.
constexpr double DeepestViewFeet = 59;
constexpr double ViewFeet = 60;
constexpr double ViewUnits = 256;

constexpr int PointDigits = 9;
constexpr int DepthDigits = 2;

struct SideOf3D {
  Side3D side;
  const List3D& list;
  bool SideOn;       // entries may become points
  double SideAngle;  // azimuth, radians
};

struct Walk {
  Run& run;
  Points3DState& state;
  const Fix& fix;
  std::string& csv;
};

void SetSideLimit(RunLimits& limits, const List3D& list) {
  if (limits.SidePercent <= 0) return;
  if (!list.LastDistance) throw Fault(FaultNumber::Subscript);
  // Without an entry that is no distance, and nothing asks for the limit.
  if (list.Count == 0) return;
  const auto last = static_cast<double>(*list.LastDistance);
  limits.SideLimitM = static_cast<float>(Finite(last * limits.SidePercent / 100 * MetresPerFoot));
}

std::uint8_t DepthPxOf(float entryDepth, std::uint8_t lastPx) {
  const double shown = entryDepth > DeepestViewFeet ? DeepestViewFeet : static_cast<double>(entryDepth);
  const std::uint8_t depthPx = ToByte(shown * ViewUnits / ViewFeet);
  return depthPx == 0 ? lastPx : depthPx;
}

// The spacing moves its mark also for entries that the later tests drop.
bool PassesLimits(const RunLimits& limits, std::uint8_t distByte, std::uint8_t& sideMark, double distM) {
  if (limits.MinDistM != 0 && static_cast<float>((distByte - sideMark) * MetresPerFoot) < limits.MinDistM)
    return false;
  sideMark = distByte;
  return limits.SideLimitM == 0 || static_cast<float>(distM) <= limits.SideLimitM;
}

void AppendPoint(Walk& walk, double sideAngle, double distM, float entryDepth) {
  Run& run = walk.run;
  const LatLon place = DestPoint(walk.fix.TrackLat, walk.fix.TrackLon, sideAngle, distM, PointDigits);
  const std::string depth =
      Ft2MtOrReport(entryDepth, run.limits.DepthAddM, DepthDigits, run.settings, run.window);
  AddSounding(run.settings, place.Lat, place.Lon, depth, walk.fix.StampText, walk.csv);
}

void WalkList(Walk& walk, const SideOf3D& side) {
  const Settings& settings = walk.run.settings;
  std::uint8_t& lastPx = walk.state.LastPx;
  std::uint8_t sideMark = 0;
  const List3D& list = side.list;
  for (int i = 0; i < list.Count; ++i) {
    if (static_cast<std::size_t>(i) >= list.Entries.size()) throw Fault(FaultNumber::Subscript);
    const Entry3D& entry = list.Entries[static_cast<std::size_t>(i)];
    const std::uint8_t distByte = ToByte(static_cast<double>(entry.Distance));
    const std::uint8_t depthPx = DepthPxOf(entry.Depth, lastPx);
    if (settings.MakeGraf) Draw3DEntry(walk.run.pictures, side.side, i, depthPx, lastPx, settings.EhoSens);
    lastPx = depthPx;
    if (!walk.fix.HasDepth) continue;
    const double distM = static_cast<double>(entry.Distance) * MetresPerFoot;
    if (!PassesLimits(walk.run.limits, distByte, sideMark, distM) || !side.SideOn) continue;
    AppendPoint(walk, side.SideAngle, distM, entry.Depth);
  }
  if (settings.MakeGraf) Close3DSide(walk.run.pictures, side.side, list.Count, lastPx);
}

}  // namespace

void Points3D(Run& run, Points3DState& state, const Fix& fix, const Frame3DLists& lists,
              std::string& csvBuffer) {
  Walk walk{run, state, fix, csvBuffer};
  // In a turn only the side on its outside gives points. A transducer that faces backwards swaps the sides.
  const bool reversed = run.settings.UseRev;
  const bool leftOn = !fix.TurnExceeded || fix.TurnUp != reversed;
  const bool rightOn = !fix.TurnExceeded || fix.TurnUp == reversed;
  const double toLeft = reversed ? HalfPi : -HalfPi;
  SetSideLimit(run.limits, lists.Left);
  WalkList(walk, {Side3D::Left, lists.Left, leftOn, fix.BoatAngle + toLeft});
  SetSideLimit(run.limits, lists.Right);
  WalkList(walk, {Side3D::Right, lists.Right, rightOn, fix.BoatAngle - toLeft});
}

}  // namespace sondrix
