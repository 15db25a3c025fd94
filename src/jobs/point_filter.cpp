#include "jobs/point_filter.h"

#include "core/number_text.h"
#include "core/rounding.h"

#include <cmath>

namespace sondrix {

const FilterRules CsvFilterRules = {
    .startSegment = 0, .segmentFollowsGap = true, .pointEndsSegment = false, .firstPointNeedsNoWay = true};
const FilterRules LogFilterRules = {
    .startSegment = 1, .segmentFollowsGap = false, .pointEndsSegment = true, .firstPointNeedsNoWay = false};

namespace {

constexpr int DistDigits = 1;
constexpr int DepthDigits = 3;

// Arithmetic in 64 bits, the result stored in 32.
float Stored(double value) { return static_cast<float>(Finite(static_cast<float>(value))); }

float WayBetween(float x, float y, std::int32_t prevX, std::int32_t prevY) {
  const double dx = static_cast<double>(x) - prevX;
  const double dy = static_cast<double>(y) - prevY;
  return Stored(RoundEven(Stored(std::sqrt(dy * dy + dx * dx)), DistDigits));
}

}  // namespace

PointFilter::PointFilter(const FilterRules& theRules, const RunLimits& limits)
    : SegmentCode(theRules.startSegment),
      rules_(theRules),
      minDist_(limits.MinDistM),
      depthStep_(limits.DepthStepM),
      maxDist_(limits.MaxDistM) {}

bool PointFilter::IsRepeat(std::string_view xText, std::string_view yText) const {
  return xText == PrevXText && yText == PrevYText;
}

void PointFilter::Offer(std::string_view xText, std::string_view yText, float depth) {
  X = LocParse(xText);
  Y = LocParse(yText);
  if (PrevX > 0 && PrevY > 0) StepDist = WayBetween(Stored(X), Stored(Y), PrevX, PrevY);
  PrevX = ToWhole32(X);
  PrevY = ToWhole32(Y);
  PrevXText = xText;
  PrevYText = yText;

  AccDist = Stored(static_cast<double>(AccDist) + StepDist);
  Gap = std::fabs(AccDist) > maxDist_ && maxDist_ > 0;
  if (Gap) SegmentCode = 1;
  if (!Gap && rules_.segmentFollowsGap) SegmentCode = 0;

  const float change = depth - PrevDepth;
  AccDepth = Stored(RoundEven(change, DepthDigits) + AccDepth);
  PrevDepth = depth;

  if (Selected > 0) return;
  AccDepth = depthStep_ + 1;
  if (rules_.firstPointNeedsNoWay) AccDist = minDist_ + 1;
}

bool PointFilter::Select() {
  if (std::fabs(AccDist) < minDist_ || std::fabs(AccDepth) < depthStep_) return false;
  ++Selected;
  AccDist = 0;
  AccDepth = 0;
  return true;
}

void PointFilter::PointWritten() {
  if (rules_.pointEndsSegment) SegmentCode = 0;
}

}  // namespace sondrix
