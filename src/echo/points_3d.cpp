#include "echo/points_3d.h"

#include "core/depth_text.h"
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

#include <algorithm>
#include <bit>

namespace sondrix {
namespace {

constexpr std::int64_t ListStart = 0x4C;
constexpr std::int64_t EntrySize = 8;
constexpr std::int64_t EntryDepthAt = 4;
constexpr std::int64_t EntryDistAt = 8;
constexpr std::int16_t SavedListBytes = 480;  // of a list, while pictures are saved

// The scale of the 3D view: 60 feet span 256 units.
constexpr double DeepestViewFeet = 59;
constexpr double ViewFeet = 60;
constexpr double ViewUnits = 256;

constexpr int PointDigits = 9;
constexpr int DepthDigits = 2;

float FloatOf(std::span<const std::uint8_t> payload, std::int64_t at) {
  if (at < 0 || at + 4 > static_cast<std::int64_t>(payload.size())) throw Fault(FaultNumber::Subscript);
  const std::uint8_t* byte = payload.data() + at;
  return std::bit_cast<float>(static_cast<std::uint32_t>(byte[0]) | static_cast<std::uint32_t>(byte[1]) << 8 |
                              static_cast<std::uint32_t>(byte[2]) << 16 |
                              static_cast<std::uint32_t>(byte[3]) << 24);
}

struct List3D {
  Side3D side;
  std::int64_t start;
  std::int16_t bytes;
  bool SideOn;       // entries may become points
  double SideAngle;  // azimuth, radians
};

struct Walk {
  Run& run;
  Points3DState& state;
  const Fix& fix;
  std::span<const std::uint8_t> payload;
  std::string& csv;
};

void SetSideLimit(Walk& walk, std::int64_t listStart, std::int16_t listBytes) {
  RunLimits& limits = walk.run.limits;
  if (limits.SidePercent <= 0) return;
  const float last = FloatOf(walk.payload, listStart + listBytes - EntrySize);
  // Without an entry that is no distance, and nothing asks for the limit.
  if (EntriesOf(listBytes) == 0) return;
  limits.SideLimitM =
      static_cast<float>(Finite(static_cast<double>(last) * limits.SidePercent / 100 * MetresPerFoot));
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
  const std::string depth = Ft2Mt(entryDepth, run.limits.DepthAddM, DepthDigits, run.settings, run.window);
  AddSounding(run.settings, place.Lat, place.Lon, depth, walk.fix.StampText, walk.csv);
}

void WalkList(Walk& walk, const List3D& list) {
  const Settings& settings = walk.run.settings;
  std::uint8_t& lastPx = walk.state.LastPx;
  std::uint8_t sideMark = 0;
  const int entries = EntriesOf(list.bytes);
  for (int i = 0; i < entries; ++i) {
    const std::int64_t base = list.start + EntrySize * i;
    const float entryDepth = FloatOf(walk.payload, base + EntryDepthAt);
    const float entryDist = FloatOf(walk.payload, base + EntryDistAt);
    const std::uint8_t distByte = ToByte(static_cast<double>(entryDist));
    const std::uint8_t depthPx = DepthPxOf(entryDepth, lastPx);
    if (settings.MakeGraf) Draw3DEntry(walk.run.pictures, list.side, i, depthPx, lastPx, settings.EhoSens);
    lastPx = depthPx;
    if (!walk.fix.HasDepth) continue;
    const double distM = static_cast<double>(entryDist) * MetresPerFoot;
    if (!PassesLimits(walk.run.limits, distByte, sideMark, distM) || !list.SideOn) continue;
    AppendPoint(walk, list.SideAngle, distM, entryDepth);
  }
  if (settings.MakeGraf) Close3DSide(walk.run.pictures, list.side, entries, lastPx);
}

}  // namespace

int EntriesOf(std::int16_t listBytes) {
  return static_cast<int>(std::max<std::int64_t>(ToWhole(listBytes / 8.0 - 2) + 1, 0));
}

void Points3D(Run& run, Points3DState& state, const Fix& fix, const Frame3D& frame, std::string& csvBuffer) {
  Walk walk{run, state, fix, frame.Payload, csvBuffer};
  SetSideLimit(walk, ListStart, frame.LeftBytes);
  const std::int64_t rightStart = ListStart + frame.LeftBytes;
  std::int16_t leftBytes = frame.LeftBytes;
  std::int16_t rightBytes = frame.RightBytes;
  if (run.settings.SaveGraf) {
    leftBytes = std::min(leftBytes, SavedListBytes);
    rightBytes = std::min(rightBytes, SavedListBytes);
  }
  // In a turn only the side on its outside gives points. A transducer that faces backwards swaps the sides.
  const bool reversed = run.settings.UseRev;
  const bool leftOn = !fix.TurnExceeded || fix.TurnUp != reversed;
  const bool rightOn = !fix.TurnExceeded || fix.TurnUp == reversed;
  const double toLeft = reversed ? HalfPi : -HalfPi;
  WalkList(walk, {Side3D::Left, ListStart, leftBytes, leftOn, fix.BoatAngle + toLeft});
  SetSideLimit(walk, rightStart, rightBytes);
  WalkList(walk, {Side3D::Right, rightStart, rightBytes, rightOn, fix.BoatAngle - toLeft});
}

}  // namespace sondrix
