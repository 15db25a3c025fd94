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

PointFilter::PointFilter(const FilterRules& rules, const RunLimits& limits)
    : rules_(rules),
      minDist_(limits.MinDistM),
      depthStep_(limits.DepthStepM),
      maxDist_(limits.MaxDistM),
      segment_(rules.startSegment) {}

Verdict PointFilter::Offer(std::string_view xText, std::string_view yText,
                           const std::function<OfferedSounding()>& read) {
  if (xText == prevXText_ && yText == prevYText_) return {};
  const OfferedSounding sounding = read();
  MoveTo(sounding);
  return Judge(sounding);
}

void PointFilter::MoveTo(const OfferedSounding& sounding) {
  x_ = LocParse(sounding.x);
  y_ = LocParse(sounding.y);
  if (prevX_ > 0 && prevY_ > 0) stepDist_ = WayBetween(Stored(x_), Stored(y_), prevX_, prevY_);
  prevX_ = ToWhole32(x_);
  prevY_ = ToWhole32(y_);
  prevXText_ = sounding.x;
  prevYText_ = sounding.y;
  accDist_ = Stored(static_cast<double>(accDist_) + stepDist_);
  const float change = sounding.depth - prevDepth_;
  accDepth_ = Stored(RoundEven(change, DepthDigits) + accDepth_);
  prevDepth_ = sounding.depth;
}

Verdict PointFilter::Judge(const OfferedSounding& sounding) {
  const float way = std::fabs(accDist_);
  const bool gap = way > maxDist_ && maxDist_ > 0;
  if (gap) segment_ = 1;
  if (!gap && rules_.segmentFollowsGap) segment_ = 0;
  if (selected_ == 0) {
    accDepth_ = depthStep_ + 1;
    if (rules_.firstPointNeedsNoWay) accDist_ = minDist_ + 1;
  }
  Verdict verdict = {Outcome::Selected, way, gap, segment_};
  if (sounding.isRejected) {
    if (sounding.endsSegment) segment_ = 1;
    verdict.outcome = Outcome::Rejected;
  } else if (std::fabs(accDist_) < minDist_ || std::fabs(accDepth_) < depthStep_) {
    verdict.outcome = Outcome::NotSelected;
  } else {
    ++selected_;
    accDist_ = 0;
    accDepth_ = 0;
    if (rules_.pointEndsSegment) segment_ = 0;
  }
  return verdict;
}

}  // namespace sondrix
